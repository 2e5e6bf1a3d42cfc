// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "support/ChildProcess.h"
#include "support/Television.h"

namespace applist::test {

/// Weston as a Wayland compositor that covers the set's X screen. Keys and clicks on that screen
/// reach Weston, and pictures of it show Weston's output.
class Weston {
public:
    /// Environment variables that make the set's other programs use Weston.
    static ChildProcess::Environment Clients();
    /// The background colour, which represents the broadcast.
    static constexpr uint32_t BACKGROUND = 0x204060;

    /// The set must not have a window manager and must have Clients() in its environment. Weston
    /// has drawn its background when the constructor returns; the test fails if it does not start.
    explicit Weston(Television& set);

    /// A picture of the screen without the edges on which the pointer rests.
    Picture Grab() const;

private:
    bool ShowsNothing() const;

    XDisplay& m_screen;
    ChildProcess m_process;
};

}  // namespace applist::test
