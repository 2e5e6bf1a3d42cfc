// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The sample application on a real X server, with and without a window manager and a compositor.
#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <poll.h>
#include <sstream>
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/syscall.h>

#include "SampleProcess.h"
#include "support/XDisplay.h"

namespace applist::test {
namespace {

// Colours of the theme: the bar of the focused row, and the panel.
constexpr uint32_t BAR = 0xFFD140;
constexpr uint32_t PANEL = 0x12161C;

/// The sample on a private display.
class OnDisplay {
public:
    explicit OnDisplay(const Desktop& desktop, const std::vector<std::string>& options = {})
        : display(desktop), sample(options, display.Environment()) {}

    testing::AssertionResult WaitForPicture() {
        return WaitUntil("a picture",
                         [this] { return display.Shows(BAR) && display.Shows(PANEL); });
    }
    /// Waits until the window is mapped and stores it.
    testing::AssertionResult WaitForWindow(XlibWindow& window) {
        return WaitUntil("a window", [&] {
            window = display.WindowTitled("port-sample");
            return window != 0;
        });
    }
    /// Waits until the sample exits, and succeeds if it does with this status.
    testing::AssertionResult Exits(int status) {
        const std::optional<int> exit = sample.WaitForExit();
        return exit == status
                   ? testing::AssertionSuccess()
                   : testing::AssertionFailure()
                         << (exit ? "exited with " + std::to_string(*exit) : "did not exit")
                         << Printed();
    }

    XDisplay display;
    SampleProcess sample;

private:
    testing::AssertionResult WaitUntil(const std::string& what,
                                       const std::function<bool()>& condition) {
        if (display.WaitUntil(condition)) {
            return testing::AssertionSuccess();
        }
        // Reads what has arrived.
        sample.Process().WaitUntil([] { return false; }, std::chrono::milliseconds(0));
        return testing::AssertionFailure() << "the sample does not show " << what << Printed();
    }
    std::string Printed() const {
        return "; its output:\n" + sample.Output() + "its errors:\n" + sample.Errors();
    }
};

// The toolkit's animator thread writes this line directly to standard error when it wakes up late
// on a busy machine.
std::string WithoutAnimatorLines(const std::string& errors) {
    std::istringstream lines(errors);
    std::string rest;
    for (std::string line; std::getline(lines, line);) {
        if (!line.starts_with("ERROR: ecore_animator thread - epoll_wait(") && !line.empty()) {
            rest += line + "\n";
        }
    }
    return rest;
}

bool Ends(int pid) {
    const int process = static_cast<int>(syscall(SYS_pidfd_open, pid, 0));
    if (process < 0) {
        return errno == ESRCH;
    }
    pollfd ended{process, POLLIN, 0};
    constexpr std::chrono::milliseconds patience = PATIENCE;
    const bool ends = poll(&ended, 1, patience.count()) == 1;
    close(process);
    return ends;
}

// The names of the processes that have this home in their environment and do not end by
// themselves: the symbolizer of a sanitized program ends a moment after the program.
std::vector<std::string> ProcessesWithHome(const std::string& home) {
    std::vector<std::string> names;
    std::error_code gone;
    for (const auto& process : std::filesystem::directory_iterator("/proc", gone)) {
        std::ifstream file(process.path() / "environ");
        const std::string environment{std::istreambuf_iterator<char>(file), {}};
        std::string name;
        std::ifstream(process.path() / "comm") >> name;
        if (environment.find("HOME=" + home + '\0') != std::string::npos &&
            !Ends(std::atoi(process.path().filename().c_str()))) {
            names.push_back(name);
        }
    }
    return names;
}

class Window : public testing::TestWithParam<Desktop> {};

TEST_P(Window, ShowsItsRowsTakesKeysAndLeavesTheScreenAroundThePanel) {
    XDisplay display(GetParam());
    ASSERT_TRUE(display.PaintGradient());
    const Picture before = display.Grab();
    SampleProcess sample({}, display.Environment());
    ASSERT_TRUE(display.WaitUntil([&] { return display.Shows(BAR) && display.Shows(PANEL); }));
    const Box panel = Difference(before, display.Grab());
    constexpr Box middle{1920 / 5, 1080 / 20, 1920 * 3 / 5, 1080 * 9 / 10};
    EXPECT_TRUE(middle.Contains(panel)) << panel;
    ASSERT_TRUE(sample.WaitForLines("focused 1", 1));
    display.TypeKey("Down");
    EXPECT_TRUE(sample.WaitForLines("focused 2", 1));
    display.TypeKey("Up");
    EXPECT_TRUE(sample.WaitForLines("focused 1", 2));
}

TEST_P(Window, IsResumedOnceAndLeavesStandardErrorSilentAndNothingBehind) {
    OnDisplay on(GetParam());
    ASSERT_TRUE(on.WaitForPicture());
    ASSERT_TRUE(on.sample.WaitForLines("resume", 1));
    // The display's events from the window's start are handled before this key.
    on.display.TypeKey("Down");
    ASSERT_TRUE(on.sample.WaitForLines("key Down Down", 1));
    on.sample.Process().Signal(SIGTERM);
    EXPECT_TRUE(on.Exits(0));
    EXPECT_EQ(on.sample.Count("resume"), 1);
    EXPECT_EQ(on.sample.Count("pause"), 0);
    EXPECT_THAT(ProcessesWithHome(on.sample.Home()), testing::IsEmpty());
    EXPECT_EQ(WithoutAnimatorLines(on.sample.Errors()), "");
    for (const auto& entry : std::filesystem::recursive_directory_iterator(on.sample.Home())) {
        EXPECT_FALSE(entry.is_regular_file()) << entry.path();
    }
}

TEST_P(Window, RendersWhatComesAfterAnEmptyFirstFrame) {
    OnDisplay on(GetParam(), {"--late-popup"});
    EXPECT_TRUE(on.display.WaitUntil([&] { return on.display.Shows(PANEL); }));
}

std::string NameOf(const testing::TestParamInfo<Desktop>& info) {
    const auto or_none = [](const std::string& name) {
        return name.empty() ? std::string("nothing") : name;
    };
    return or_none(info.param.windowManager) + "_and_" + or_none(info.param.compositor);
}

INSTANTIATE_TEST_SUITE_P(Desktops, Window,
                         testing::Values(Desktop{"", ""}, Desktop{"openbox", ""},
                                         Desktop{"", "picom"}, Desktop{"openbox", "picom"},
                                         Desktop{"openbox", "xcompmgr"}),
                         NameOf);

TEST(WindowVisibility, PausesWhenIconifiedAndResumesWhenShownAgain) {
    OnDisplay on({"openbox", ""});
    ASSERT_TRUE(on.WaitForPicture());
    XlibWindow window = 0;
    ASSERT_TRUE(on.WaitForWindow(window));
    ASSERT_TRUE(on.display.Iconify(window));
    ASSERT_TRUE(on.sample.WaitForLines("pause", 1));
    on.display.Map(window);
    EXPECT_TRUE(on.sample.WaitForLines("resume", 2));
}

TEST(WindowVisibility, PausesWhenCoveredAndResumesWhenUncovered) {
    OnDisplay on({"openbox", ""});
    ASSERT_TRUE(on.WaitForPicture());
    on.display.Cover();
    ASSERT_TRUE(on.sample.WaitForLines("pause", 1));
    on.display.Uncover();
    EXPECT_TRUE(on.sample.WaitForLines("resume", 2));
}

TEST(WindowVisibility, DrawsAgainAfterHavingBeenCovered) {
    OnDisplay on({"", ""});
    ASSERT_TRUE(on.WaitForPicture());
    on.display.Cover();
    ASSERT_TRUE(on.display.WaitUntil([&] { return !on.display.Shows(BAR); }));
    on.display.Uncover();
    EXPECT_TRUE(on.WaitForPicture());
}

TEST(WindowVisibility, TakesNoKeyWhileItIsCovered) {
    OnDisplay on({"", ""});
    ASSERT_TRUE(on.WaitForPicture());
    on.display.Cover();
    ASSERT_TRUE(on.sample.WaitForLines("pause", 1));
    on.display.TypeKey("Down");
    on.display.Uncover();
    ASSERT_TRUE(on.sample.WaitForLines("resume", 2));
    on.display.TypeKey("Up");
    ASSERT_TRUE(on.sample.WaitForLines("key Up Up", 1));
    EXPECT_EQ(on.sample.Count("press Down"), 0);
    EXPECT_EQ(on.sample.Count("key Down Down"), 0);
    EXPECT_EQ(on.sample.Count("focused 2"), 0);
}

TEST(WindowWithoutWindowManager, GetsTheKeyboardBackFromAWindowThatCloses) {
    OnDisplay on({"", ""});
    ASSERT_TRUE(on.sample.WaitForLines("focused 1", 1));
    SampleProcess other({}, on.display.Environment());
    ASSERT_TRUE(other.WaitForLines("focused 1", 1));
    other.Process().Signal(SIGTERM);
    ASSERT_EQ(other.Process().WaitForExit(), 0);
    EXPECT_TRUE(on.display.WaitUntil(
        [&] { return on.display.FocusedWindow() == on.display.WindowTitled("port-sample"); }));
    on.display.TypeKey("Down");
    EXPECT_TRUE(on.sample.WaitForLines("focused 2", 1));
}

TEST(WindowClose, EndsTheApplication) {
    OnDisplay on({"openbox", ""});
    ASSERT_TRUE(on.WaitForPicture());
    XlibWindow window = 0;
    ASSERT_TRUE(on.WaitForWindow(window));
    on.display.RequestClose(window);
    EXPECT_TRUE(on.Exits(0));
    EXPECT_EQ(on.sample.Count("terminate"), 1);
}

TEST(Keys, EscapeArrivesAsBackAndLeavesThePopup) {
    OnDisplay on({"", ""});
    ASSERT_TRUE(on.WaitForPicture());
    on.display.TypeKey("Escape");
    EXPECT_TRUE(on.sample.WaitForLines("key XF86Back XF86Back", 1));
    EXPECT_EQ(on.sample.Count("press XF86Back"), 1);
    EXPECT_EQ(on.sample.Count("press Escape"), 0);
    on.display.TypeKey("Down");
    EXPECT_TRUE(on.sample.WaitForLines("focused 2", 1));
    EXPECT_EQ(on.sample.Count("dismissed"), 0);
    EXPECT_TRUE(on.WaitForPicture());
}

TEST(Keys, F10ArrivesAsExit) {
    OnDisplay on({"", ""});
    ASSERT_TRUE(on.WaitForPicture());
    on.display.TypeKey("F10");
    EXPECT_TRUE(on.sample.WaitForLines("key XF86Exit XF86Exit", 1));
}

TEST(Keys, TheExitKeyWithoutANameArrivesAsExit) {
    OnDisplay on({"", ""});
    ASSERT_TRUE(on.WaitForPicture());
    constexpr unsigned long exit_symbol = 0x100811AE;
    on.display.TypeKeyWithSymbol(exit_symbol, 182);
    EXPECT_TRUE(on.sample.WaitForLines("key XF86Exit XF86Exit", 1));
}

TEST(Keys, OfAReceiverArriveAsTheRemoteControls) {
    OnDisplay on({"", ""});
    ASSERT_TRUE(on.WaitForPicture());
    const std::pair<unsigned long, std::string> keys[] = {
        {0x1008FFA0, "Return"},    // XF86Select
        {0xFF8D, "Return"},        // KP_Enter
        {0x1008FF56, "XF86Exit"},  // XF86Close
        {0x10081192, "Prior"},     // XF86ChannelUp
        {0x10081193, "Next"},      // XF86ChannelDown
    };
    unsigned int code = 200;
    for (const auto& [symbol, name] : keys) {
        const std::string line = "key " + name + " " + name;
        const int before = on.sample.Count(line);
        on.display.TypeKeyWithSymbol(symbol, code++);
        EXPECT_TRUE(on.sample.WaitForLines(line, before + 1)) << std::hex << symbol;
    }
}

TEST(Keys, AreThoseOfTheSetsFile) {
    const TemporaryDir root;
    std::ofstream(root.path() / "keys.ini") << "F2=XF86Exit\nF3=Fire\nF4=XF86Back\n";
    XDisplay display;
    auto environment = display.Environment();
    environment["APPLIST_PLATFORM_ROOT"] = root.path();
    SampleProcess sample({}, environment);
    ASSERT_TRUE(display.WaitForColour(BAR));
    for (const char* key : {"F2", "F3", "F4"}) {
        display.TypeKey(key);
    }
    EXPECT_TRUE(sample.WaitForLines("key XF86Back XF86Back", 1));
    EXPECT_EQ(sample.Count("key XF86Exit XF86Exit"), 1);
    EXPECT_EQ(sample.Count("key F3 F3"), 1);
    EXPECT_THAT(sample.Errors(),
                testing::HasSubstr((root.path() / "keys.ini").string() +
                                   ": line 2: not a key of the remote control: Fire\n"));
}

class KeyHeldSinceBeforeTheStart : public testing::TestWithParam<const char*> {};

TEST_P(KeyHeldSinceBeforeTheStart, DoesNothingWhenItIsReleased) {
    XDisplay display{{"", ""}};
    display.PressKey(GetParam());
    SampleProcess sample({}, display.Environment());
    ASSERT_TRUE(display.WaitUntil([&] { return display.Shows(BAR) && display.Shows(PANEL); }));
    display.ReleaseKey(GetParam());
    display.TypeKey("F2");
    ASSERT_TRUE(sample.WaitForLines("key F2 F2", 1));
    EXPECT_EQ(sample.CountStarting("key "), 1) << sample.Output();
    EXPECT_EQ(sample.CountStarting("press "), 1) << sample.Output();
    EXPECT_EQ(sample.CountStarting("focused "), 1) << sample.Output();
    display.TypeKey(GetParam());
    EXPECT_TRUE(sample.Process().WaitUntil([&] { return sample.CountStarting("key ") == 2; }));
}

INSTANTIATE_TEST_SUITE_P(Keys, KeyHeldSinceBeforeTheStart,
                         testing::Values("Right", "Down", "Return", "Escape"));

TEST(Keys, DoNothingWhileTheyRepeatAPressFromBeforeTheStart) {
    XDisplay display{{"openbox", ""}};
    display.PressKey("Down");
    SampleProcess sample({"--raw-keys"}, display.Environment());
    ASSERT_TRUE(display.WaitUntil([&] { return display.Shows(BAR) && display.Shows(PANEL); }));
    ASSERT_TRUE(sample.WaitForLines("raw Down", 3));
    display.ReleaseKey("Down");
    display.TypeKey("F2");
    ASSERT_TRUE(sample.WaitForLines("key F2 F2", 1));
    EXPECT_EQ(sample.CountStarting("key "), 1) << sample.Output();
    EXPECT_EQ(sample.Count("focused 1"), 1);
    EXPECT_EQ(sample.CountStarting("focused "), 1) << sample.Output();
    display.TypeKey("Down");
    EXPECT_TRUE(sample.WaitForLines("focused 2", 1));
}

TEST(Keys, DoNothingWhileTheyRepeatAPressFromAnotherWindow) {
    OnDisplay on({"openbox", ""}, {"--raw-keys"});
    ASSERT_TRUE(on.sample.WaitForLines("focused 1", 1));
    const XlibWindow other = on.display.OpenFullScreen(0x204060);
    ASSERT_NE(other, 0U);
    on.display.PressKey("Down");
    on.display.Close(other);
    ASSERT_TRUE(on.sample.WaitForLines("raw Down", 3));
    on.display.ReleaseKey("Down");
    on.display.TypeKey("Up");
    ASSERT_TRUE(on.sample.WaitForLines("focused 3", 1));
    EXPECT_EQ(on.sample.Count("focused 2"), 0);
    EXPECT_EQ(on.sample.Count("key Down Down"), 0);
}

TEST(Keys, AreDrawnWithoutWaitingForATick) {
    XDisplay display({"openbox", ""});
    SampleProcess sample({"--no-ticks"}, display.Environment());
    ASSERT_TRUE(display.WaitForColour(BAR)) << sample.Output() << sample.Errors();
    // Down acts on the key press, Right on the release.
    for (const auto& [key, row] :
         {std::pair("Down", "focused 2"), std::pair("Right", "focused 3")}) {
        const Picture before = display.Grab();
        display.TypeKey(key);
        ASSERT_TRUE(sample.WaitForLines(row, 1));
        EXPECT_TRUE(display.WaitUntil([&] { return display.Grab() != before; })) << row;
    }
}

}  // namespace
}  // namespace applist::test
