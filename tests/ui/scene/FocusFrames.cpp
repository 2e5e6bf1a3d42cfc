// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The focus as it is drawn: where the model says, in every single frame.
#include "ui/scene/Scene.h"

namespace applist::test {
namespace {

class TheDrawnFocus : public SceneTest {
protected:
    /// No frame may show the focus anywhere but on the row that is selected.
    void ExpectNoFrameBehindTheModel() {
        EXPECT_FALSE(frames().empty());
        for (const Frame& frame : frames()) {
            EXPECT_EQ(frame.focused, frame.selected) << frame;
            EXPECT_TRUE(frame.focusedInside) << frame;
        }
    }
};

class EachKey : public TheDrawnFocus, public testing::WithParamInterface<const char*> {};

TEST_P(EachKey, IsInTheNextFrame) {
    Fill(30);
    Forget();
    for (int press = 0; press < 20; ++press) {
        const size_t drawn = frames().size();
        Type(GetParam());
        EXPECT_GT(frames().size(), drawn);
    }
    ExpectNoFrameBehindTheModel();
    const bool forward = std::string(GetParam()) == "Down" || std::string(GetParam()) == "Right";
    EXPECT_EQ(Selected(), forward ? "Row 21" : "Row 11");
    EXPECT_EQ(FocusedRow(), Selected());
}

INSTANTIATE_TEST_SUITE_P(Keys, EachKey, testing::Values("Down", "Up", "Right", "Left"),
                         [](const auto& test) { return std::string(test.param); });

TEST_F(TheDrawnFocus, IsUpWithKeysThatComeFasterThanFrames) {
    Fill(30);
    Forget();
    for (int burst = 0; burst < 5; ++burst) {
        for (const char* key : {"Down", "Down", "Right", "Down", "Up", "Left", "Down"}) {
            Send(key);
        }
        Draw();
    }
    ExpectNoFrameBehindTheModel();
    EXPECT_EQ(Selected(), "Row 16");
    EXPECT_EQ(FocusedRow(), Selected());
}

}  // namespace
}  // namespace applist::test
