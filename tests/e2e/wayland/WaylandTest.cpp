// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The list under a Wayland compositor.
#include <algorithm>
#include <cstdlib>
#include <memory>

#include <gtest/gtest.h>

#include "e2e/television/LoggedList.h"

namespace applist::test {
namespace {

constexpr uint32_t TERMINAL = 0x000000;

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

class OnWayland : public LoggedList {
protected:
    explicit OnWayland(int width = 1920, int height = 1080)
        : LoggedList(Weston::Clients(), {"", "", width, height}), weston(m_set) {}

    XDisplay& screen() { return m_set.screen(); }
    /// The X server's focus is on the compositor's window.
    void ShowThreeItems() {
        Show("a\tAlpha\nb\tBravo\nc\tCharlie\n");
        ASSERT_TRUE(m_set.middleware().SeesSelected("a", "Alpha"));
        ASSERT_TRUE(m_set.WaitForFocusMark());
    }
    /// Opens another program's full-screen window, which takes the keyboard focus; false if it does
    /// not appear.
    bool OpenFullScreen() {
        terminal = std::make_unique<ChildProcess>(
            std::vector<std::string>{"weston-terminal", "--fullscreen", "--shell=/bin/cat"},
            m_set.Environment());
        return screen().WaitUntil([this] { return screen().Pixel(960, 1000) == TERMINAL; });
    }
    /// True iff the list has ended well, activated this row and logged no error of the toolkit.
    testing::AssertionResult ActivatedWithoutErrors(const std::string& name) {
        const testing::AssertionResult activated = Activated(name);
        const bool errors =
            Log().find("ERR<") != std::string::npos || Log().find("CRI<") != std::string::npos;
        return errors || m_set.application().WaitForExit() != 0
                   ? testing::AssertionFailure() << Log()
                   : activated;
    }

    Weston weston;
    std::unique_ptr<ChildProcess> terminal;
};

TEST_F(OnWayland, AKeyWithoutANameIsTheSetsByItsCode) {
    constexpr unsigned int UNNAMED = 120;
    m_set.WriteFile("set/keys.ini", "Keycode-120=Down\n");
    ASSERT_NO_FATAL_FAILURE(ShowThreeItems());
    screen().TypeKeyWithSymbol(0, UNNAMED);
    EXPECT_TRUE(m_set.middleware().SeesSelected("b", "Bravo")) << Log();
}

TEST_F(OnWayland, TheBroadcastIsSeenAroundThePanelToThePixel) {
    const Picture broadcast = weston.Grab();
    ASSERT_NO_FATAL_FAILURE(ShowThreeItems());
    const Box panel = Difference(broadcast, weston.Grab());
    EXPECT_NEAR(panel.width, 816, 1);
    EXPECT_NEAR(panel.height, 738, 1);
    EXPECT_NEAR(panel.CentreX(), 960, 1);
    EXPECT_NEAR(panel.CentreY(), 540, 1);
}

TEST_F(OnWayland, KeysMoveRoundTheListAndActivate) {
    ASSERT_NO_FATAL_FAILURE(ShowThreeItems());
    for (const auto& [key, id, name] : {std::tuple("Down", "b", "Bravo"),
                                        {"Right", "c", "Charlie"},
                                        {"Down", "a", "Alpha"},
                                        {"Up", "c", "Charlie"},
                                        {"Right", "a", "Alpha"},
                                        {"Left", "c", "Charlie"},
                                        {"Up", "b", "Bravo"}}) {
        screen().TypeKey(key);
        EXPECT_TRUE(m_set.middleware().SeesSelected(id, name)) << key;
    }
    screen().TypeKey("Return");
    EXPECT_TRUE(m_set.middleware().Sees("event 3 ItemClicked"));
    EXPECT_TRUE(ActivatedWithoutErrors("Bravo"));
}

TEST_F(OnWayland, APointersClickActivatesTheRowBelowItAndItsMoveNothing) {
    ASSERT_NO_FATAL_FAILURE(ShowThreeItems());
    const Box first = AreaOf(weston.Grab(), Television::FOCUS_COLOUR);
    constexpr int ROW_HEIGHT = 72;
    screen().MovePointer(first.CentreX(), first.CentreY() + 2 * ROW_HEIGHT);
    screen().TypeKey("Down");
    EXPECT_TRUE(m_set.middleware().SeesSelected("b", "Bravo"));
    screen().Click(first.CentreX(), first.CentreY() + 2 * ROW_HEIGHT);
    EXPECT_TRUE(m_set.middleware().Sees("event 3 ItemClicked"));
    EXPECT_TRUE(ActivatedWithoutErrors("Charlie"));
}

class AKeyThatCloses : public OnWayland, public testing::WithParamInterface<const char*> {};

TEST_P(AKeyThatCloses, LeavesNothingOfTheList) {
    const Picture broadcast = weston.Grab();
    ASSERT_NO_FATAL_FAILURE(ShowThreeItems());
    screen().TypeKey(GetParam());
    EXPECT_EQ(m_set.application().WaitForExit(), 0);
    EXPECT_TRUE(screen().WaitUntil([&] { return weston.Grab() == broadcast; }));
}

INSTANTIATE_TEST_SUITE_P(Keys, AKeyThatCloses, testing::Values("Escape", "F10"),
                         [](const auto& key) { return std::string(key.param); });

TEST_F(OnWayland, TheListComesInFrontOfAFullScreenWindow) {
    ASSERT_TRUE(OpenFullScreen());
    ASSERT_NO_FATAL_FAILURE(ShowThreeItems());
    EXPECT_EQ(screen().Pixel(100, 1000), TERMINAL);
    screen().TypeKey("Down");
    EXPECT_TRUE(m_set.middleware().SeesSelected("b", "Bravo"));
}

TEST_F(OnWayland, AWindowThatCoversTheListHasTheKeysUntilItIsGone) {
    ASSERT_NO_FATAL_FAILURE(ShowThreeItems());
    ASSERT_TRUE(OpenFullScreen());
    for (const char* key : {"Down", "Right", "Return", "Escape"}) {
        screen().TypeKey(key);
    }
    terminal.reset();
    ASSERT_TRUE(m_set.WaitForFocusMark());
    screen().TypeKey("Return");
    EXPECT_TRUE(ActivatedWithoutErrors("Alpha"));
}

TEST_F(OnWayland, TheListIsPausedWhileAnotherWindowHasTheKeys) {
    ASSERT_NO_FATAL_FAILURE(ShowThreeItems());
    const auto logs = [this](const std::string& text) {
        return screen().WaitUntil([&] { return Log().find(text) != std::string::npos; });
    };
    EXPECT_TRUE(logs("_resume callback function calling"));
    EXPECT_EQ(Log().find("_pause callback"), std::string::npos);
    ASSERT_TRUE(OpenFullScreen());
    EXPECT_TRUE(logs("_pause callback function calling"));
}

TEST_F(OnWayland, ThePopupWithTheReasonForNoListOpensAndCloses) {
    ASSERT_EQ(m_set.Configure({"set", "memory/tv-viewer/data_service", "int", "0"}), 0);
    const Picture broadcast = weston.Grab();
    const auto application = m_set.StartApplication();
    ASSERT_TRUE(screen().WaitForColour(Television::PANEL_COLOUR))
        << m_set.sessionBus().daemon().Errors();
    EXPECT_EQ(application->WaitForExit(), 0);
    screen().TypeKey("Return");
    EXPECT_TRUE(screen().WaitUntil([&] { return weston.Grab() == broadcast; }));
}

struct Size {
    int width;
    int height;
};

class OnAWaylandScreen : public OnWayland, public testing::WithParamInterface<Size> {
protected:
    OnAWaylandScreen() : OnWayland(GetParam().width, GetParam().height) {}
};

TEST_P(OnAWaylandScreen, ThePanelKeepsItsProportions) {
    constexpr int ROUNDING = 3;
    const Picture broadcast = weston.Grab();
    ASSERT_NO_FATAL_FAILURE(ShowThreeItems());
    Box panel;
    const auto stands = [&] {
        panel = Difference(broadcast, weston.Grab());
        return std::abs(panel.CentreX() - GetParam().width / 2) <= 1 &&
               std::abs(panel.CentreY() - GetParam().height / 2) <= 1;
    };
    EXPECT_TRUE(screen().WaitUntil(stands)) << panel;
    const double scale = GetParam().height / 1080.0;
    EXPECT_NEAR(panel.width / scale, 816, ROUNDING);
    EXPECT_NEAR(panel.height / scale, 738, ROUNDING);
}

// From a scale of 2 the toolkit's own frame around a window would be one row of pixels too low.
INSTANTIATE_TEST_SUITE_P(Sizes, OnAWaylandScreen,
                         testing::Values(Size{1280, 720}, Size{3840, 2160}), [](const auto& size) {
                             return "Height" + std::to_string(size.param.height);
                         });

}  // namespace
}  // namespace applist::test
