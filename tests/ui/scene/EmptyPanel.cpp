// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The panel without rows, before the list is filled and after it is emptied.
#include "ui/scene/SceneTest.h"

namespace applist::test {
namespace {

class TheEmptyPanel : public SceneTest {};

TEST_F(TheEmptyPanel, ShowsNoFocusBeforeTheListIsFilled) {
    Draw();
    Type("Down");
    for (const Frame& frame : frames()) {
        EXPECT_EQ(frame.focused, std::nullopt) << frame;
    }
    EXPECT_FALSE(elm_object_focus_get(list()));
}

TEST_F(TheEmptyPanel, ShowsNoRowAfterTheListWasEmptied) {
    Fill(20);
    Type("Down");
    model().RemoveAllItems();
    Forget();
    Draw();
    Type("Down");
    Type("Right");
    Draw();
    EXPECT_FALSE(frames().empty());
    for (const Frame& frame : frames()) {
        EXPECT_TRUE(frame.rows.empty()) << frame;
        EXPECT_EQ(frame.focused, std::nullopt) << frame;
    }
    EXPECT_FALSE(elm_object_focus_get(list()));
}

TEST_F(TheEmptyPanel, IsNotFollowedByAFrameWithRowsButWithoutTheFocus) {
    Forget();
    Fill(20);
    Draw();
    for (const Frame& frame : frames()) {
        EXPECT_EQ(frame.rows.empty(), frame.items == 0) << frame;
        EXPECT_EQ(frame.focused.has_value(), !frame.rows.empty()) << frame;
    }
}

TEST_F(TheEmptyPanel, IsNotDrawnWhenTheListIsEmptiedAndFilledAtOnce) {
    Fill(20);
    Type("Down");
    Draw();
    model().RemoveAllItems();
    Forget();
    Fill(5);
    Draw();
    for (const Frame& frame : frames()) {
        EXPECT_EQ(frame.focused, frame.selected) << frame;
        EXPECT_EQ(frame.rows.size(), 5U) << frame;
    }
}

}  // namespace
}  // namespace applist::test
