// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <vector>

#include <sys/types.h>

/// Replaces the C library's usleep() by one that returns at once.
namespace applist::test {

struct FakeSleep {
    /// Every pause in microseconds, oldest first.
    std::vector<useconds_t> pauses;
    /// Called during each pause, so that a test can change the state during it.
    std::function<void()> meanwhile;
};

/// The one clock of the process; tests assign FakeSleep{} to reset it.
FakeSleep& TheSleep();

}  // namespace applist::test
