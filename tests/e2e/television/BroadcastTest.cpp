// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The list together with other content of the screen: the broadcast below it and other windows.
#include <cstdlib>

#include "LoggedList.h"

namespace applist::test {
namespace {

constexpr uint32_t VIDEO = 0x204060;
constexpr Box SAFE_AREA{1920 / 20, 1080 / 20, 1920 * 9 / 10, 1080 * 9 / 10};

class OverTheBroadcast : public LoggedList {
protected:
    XDisplay& screen() { return m_set.screen(); }
    XlibWindow List() { return screen().WindowTitled(Television::LIST); }
    /// The area that differs from before, as soon as its middle is that of the screen. A compositor
    /// may paint the first frame in parts.
    Box Panel(const Picture& before) {
        Box panel;
        EXPECT_TRUE(screen().WaitUntil([&] {
            panel = Difference(before, screen().Grab());
            return std::abs(panel.CentreX() - 1920 / 2) <= 1 &&
                   std::abs(panel.CentreY() - 1080 / 2) <= 1;
        })) << panel;
        return panel;
    }
    /// Waits until the list is visible again, with its first row still selected.
    void ExpectFirstRowSelected() {
        ASSERT_TRUE(m_set.WaitForFocusedRow());
        screen().TypeKey("Return");
        EXPECT_TRUE(Activated("Alpha"));
    }
};

TEST_F(OverTheBroadcast, ThePictureOutsideThePanelIsTheBroadcastsToThePixel) {
    ASSERT_TRUE(screen().PaintGradient());
    const Picture broadcast = screen().Grab();
    ASSERT_NO_FATAL_FAILURE(ShowThreeItems());
    const Box panel = Panel(broadcast);
    // A set may cut off a twentieth at each edge; a dimmed broadcast would differ up to there.
    EXPECT_TRUE(SAFE_AREA.Contains(panel)) << panel;
    EXPECT_LT(panel.width, 1920 / 2);
}

TEST_F(OverTheBroadcast, NothingOfTheListIsLeftWhenItIsClosed) {
    ASSERT_TRUE(screen().PaintGradient());
    const Picture broadcast = screen().Grab();
    ASSERT_NO_FATAL_FAILURE(ShowThreeItems());
    screen().TypeKey("Escape");
    EXPECT_TRUE(screen().WaitUntil([&] { return screen().Grab() == broadcast; }));
}

TEST_F(OverTheBroadcast, TheListComesInFrontOfAFullScreenVideo) {
    ASSERT_NE(screen().OpenFullScreen(VIDEO), 0U);
    const Picture video = screen().Grab();
    ASSERT_NO_FATAL_FAILURE(ShowThreeItems());
    EXPECT_EQ(screen().FocusedWindow(), List());
    const Box panel = Panel(video);
    EXPECT_TRUE(SAFE_AREA.Contains(panel)) << panel;
}

TEST_F(OverTheBroadcast, KeysAreTheVideosThatCoversTheList) {
    ASSERT_NO_FATAL_FAILURE(ShowThreeItems());
    const XlibWindow video = screen().OpenFullScreen(VIDEO);
    ASSERT_NE(video, 0U);
    for (const char* key : {"Down", "Right", "Return", "Escape"}) {
        screen().TypeKey(key);
    }
    screen().Close(video);
    ExpectFirstRowSelected();
}

}  // namespace
}  // namespace applist::test
