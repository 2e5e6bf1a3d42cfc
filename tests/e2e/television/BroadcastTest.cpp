// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The list and what runs on the screen besides: the broadcast behind it, other windows around it.
#include "LoggedList.h"

namespace applist::test {
namespace {

constexpr uint32_t VIDEO = 0x204060;

class OverTheBroadcast : public LoggedList {
protected:
    XDisplay& screen() { return m_set.screen(); }
    XlibWindow List() { return screen().WindowTitled(Television::LIST); }
    /// Waits until the list is back, and finds its first row still selected.
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
    const Rectangle panel = Difference(broadcast, screen().Grab());
    // A twentieth of each edge is what a set may cut off; a dimmed broadcast would differ up to
    // there.
    EXPECT_GE(panel.left, 1920 / 20);
    EXPECT_GE(panel.top, 1080 / 20);
    EXPECT_LT(panel.right, 1920 - 1920 / 20);
    EXPECT_LT(panel.bottom, 1080 - 1080 / 20);
    EXPECT_NEAR(panel.CentreX(), 1920 / 2, 1);
    EXPECT_NEAR(panel.CentreY(), 1080 / 2, 1);
    EXPECT_LT(panel.right - panel.left, 1920 / 2);
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
    const Picture now = screen().Grab();
    EXPECT_EQ(now.At(5, 5), VIDEO);
    EXPECT_EQ(now.At(1914, 1074), VIDEO);
    EXPECT_LT(Difference(video, now).right, 1920 - 1920 / 20);
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

TEST_F(OverTheBroadcast, KeysAreNotTheListsWhileItIsPutAway) {
    ASSERT_NO_FATAL_FAILURE(ShowThreeItems());
    const XlibWindow list = List();
    ASSERT_TRUE(screen().Iconify(list));
    ASSERT_NE(screen().FocusedWindow(), list);
    for (const char* key : {"Down", "Right", "Return", "Escape"}) {
        screen().TypeKey(key);
    }
    screen().Map(list);
    ExpectFirstRowSelected();
}

}  // namespace
}  // namespace applist::test
