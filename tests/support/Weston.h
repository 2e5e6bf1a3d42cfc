// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "support/ChildProcess.h"
#include "support/Television.h"

namespace applist::test {

/// Wayland on a set: Weston, drawn over the whole of the set's X screen. What is typed, clicked and
/// seen there is typed, clicked and seen in Weston.
class Weston {
public:
    /// What everybody else on the set must be told, so that they use it.
    static ChildProcess::Environment Clients();
    /// What stands for the broadcast.
    static constexpr uint32_t BACKGROUND = 0x204060;

    /// The set has no window manager and Clients() in its environment. Weston has drawn its
    /// background when the constructor returns; if it does not start, that fails the test.
    explicit Weston(Television& set);

    /// What is seen, but for the edges at which the pointer rests.
    Picture Grab() const;

private:
    bool ShowsNothing() const;

    XDisplay& m_screen;
    ChildProcess m_process;
};

}  // namespace applist::test
