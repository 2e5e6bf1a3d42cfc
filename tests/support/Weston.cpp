// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "support/Weston.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace applist::test {
namespace {

constexpr const char* SOCKET = "wayland-set";

// As on a television: no panel, no effects.
constexpr const char* CONFIGURATION = R"([core]
idle-time=0
[shell]
background-color=0xff204060
panel-position=none
animation=none
startup-animation=none
close-animation=none
locking=false
)";

std::vector<std::string> Command(Television& set) {
    const Box screen = set.screen().Area();
    return {"weston",
            "--backend=x11-backend.so",
            "--use-pixman",
            std::string("--socket=") + SOCKET,
            "--config=" + set.WriteFile("weston.ini", CONFIGURATION),
            "--log=" + set.WriteFile("weston.log", ""),
            "--width=" + std::to_string(screen.width),
            "--height=" + std::to_string(screen.height)};
}

ChildProcess::Environment Surroundings(Television& set) {
    ChildProcess::Environment environment = set.Environment();
    for (const auto& [name, value] : set.screen().Environment()) {
        environment[name] = value;
    }
    return environment;
}

}  // namespace

ChildProcess::Environment Weston::Clients() {
    return {{"DISPLAY", std::nullopt}, {"WAYLAND_DISPLAY", SOCKET}};
}

Weston::Weston(Television& set)
    : m_screen(set.screen()), m_process(Command(set), Surroundings(set)) {
    const Box all = m_screen.Area();
    EXPECT_TRUE(m_screen.WaitUntil([&] {
        return m_screen.Pixel(all.CentreX() / 2, all.CentreY()) == BACKGROUND;
    })) << m_process.Errors();
    // Weston draws the pointer at the last position that it saw; in the bottom right corner only
    // the tip is visible. Weston adds up relative moves and misses those before it listens and the
    // first one onto its window. Moving across the whole screen and back makes its position correct
    // from any start.
    EXPECT_TRUE(m_screen.WaitUntil([&] {
        m_screen.MovePointer(all.CentreX(), all.CentreY());
        m_screen.MovePointer(all.Right() - 1, all.Bottom() - 1);
        m_screen.MovePointer(0, 0);
        m_screen.MovePointer(all.Right() - 1, all.Bottom() - 1);
        return ShowsNothing();
    }));
}

Picture Weston::Grab() const {
    constexpr int TIP = 8;
    const Box all = m_screen.Area();
    return m_screen.Grab().Cut({0, 0, all.width - TIP, all.height - TIP});
}

bool Weston::ShowsNothing() const {
    const Picture picture = Grab();
    return std::all_of(picture.pixels.begin(), picture.pixels.end(),
                       [](uint32_t pixel) { return pixel == BACKGROUND; });
}

}  // namespace applist::test
