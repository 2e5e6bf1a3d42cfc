// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Screens of other sizes than the list's design size.
#include <cmath>
#include <cstdlib>

#include <gtest/gtest.h>

#include "support/Television.h"

namespace applist::test {
namespace {

class AScreen : public testing::TestWithParam<Desktop> {
protected:
    XDisplay& screen() { return set.screen(); }
    /// Converts a length on this screen to a screen 1080 pixels high.
    double Unscaled(int length) { return length * 1080.0 / screen().Area().height; }

    Television set{{}, GetParam()};
};

TEST_P(AScreen, ShowsThePanelInItsMiddleAtItsProportions) {
    // One pixel on a small screen is 1.5 pixels at the design size.
    constexpr int ROUNDING = 3;
    ASSERT_TRUE(screen().PaintGradient());
    const Picture broadcast = screen().Grab();
    ASSERT_NO_FATAL_FAILURE(set.ShowThreeItems());
    Picture picture;
    Box panel;
    // A compositor may paint the first frame in parts.
    static_cast<void>(screen().WaitUntil([&] {
        picture = screen().Grab();
        panel = Difference(broadcast, picture);
        return std::abs(Unscaled(panel.width) - 816) <= ROUNDING &&
               std::abs(Unscaled(panel.height) - 738) <= ROUNDING;
    }));
    EXPECT_NEAR(Unscaled(panel.width), 816, ROUNDING);
    EXPECT_NEAR(Unscaled(panel.height), 738, ROUNDING);
    EXPECT_NEAR(panel.CentreX(), screen().Area().CentreX(), 1);
    EXPECT_NEAR(panel.CentreY(), screen().Area().CentreY(), 1);
    const Box row = AreaOf(picture, Television::FOCUS_COLOUR);
    // The edges are blends of two colours.
    EXPECT_NEAR(Unscaled(row.height), 72, 2 * ROUNDING);
    EXPECT_NEAR(Unscaled(row.width), 760, 2 * ROUNDING);
}

INSTANTIATE_TEST_SUITE_P(Screens, AScreen,
                         testing::Values(Desktop{"openbox", "picom", 1280, 720},
                                         Desktop{"", "picom", 1280, 720},
                                         Desktop{"openbox", "picom", 1920, 1080},
                                         Desktop{"openbox", "picom", 3840, 2160},
                                         Desktop{"", "picom", 3840, 2160}),
                         [](const auto& desktop) {
                             return "Height" + std::to_string(desktop.param.height) +
                                    (desktop.param.windowManager.empty() ? "Unmanaged" : "Managed");
                         });

class AScreenOfAnotherSize : public testing::TestWithParam<Desktop> {};

TEST_P(AScreenOfAnotherSize, ShowsAnOpenListAsAWholeInItsMiddle) {
    // The panel's edges are blends of two colours.
    constexpr int EDGE = 8;
    Television set({}, GetParam());
    ASSERT_NO_FATAL_FAILURE(set.ShowThreeItems());
    set.screen().Resize(1280, 720);
    const Box area = set.screen().Area();
    Box panel;
    EXPECT_TRUE(set.screen().WaitUntil([&] {
        const Picture picture = set.screen().Grab();
        panel = AreaOf(picture, Television::PANEL_COLOUR);
        return std::abs(panel.CentreX() - area.CentreX()) <= EDGE &&
               std::abs(panel.CentreY() - area.CentreY()) <= EDGE &&
               panel.height < area.height - EDGE &&
               panel.Contains(AreaOf(picture, Television::FOCUS_COLOUR));
    })) << panel;
}

INSTANTIATE_TEST_SUITE_P(Screens, AScreenOfAnotherSize,
                         testing::Values(Desktop{"openbox", ""}, Desktop{"", ""}),
                         [](const auto& desktop) {
                             return desktop.param.windowManager.empty() ? "Unmanaged" : "Managed";
                         });

}  // namespace
}  // namespace applist::test
