// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <vector>

#include <sys/types.h>

/// Sleep that takes no time. Linking it provides usleep() in place of the C library's.
namespace applist::test {

struct FakeSleep {
    /// Every pause in microseconds, oldest first.
    std::vector<useconds_t> pauses;
    /// Called during each pause, for what happens meanwhile.
    std::function<void()> meanwhile;
};

/// The one clock of the process; tests assign FakeSleep{} to start afresh.
FakeSleep& TheSleep();

}  // namespace applist::test
