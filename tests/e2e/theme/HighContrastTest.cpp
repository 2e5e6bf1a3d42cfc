// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The viewer's high-contrast setting and its effect on the screen.
#include <filesystem>

#include <gtest/gtest.h>

#include "support/Television.h"

namespace applist::test {
namespace {

constexpr const char* SETTING = "db/menu/accessibility/high-contrast";
constexpr const char* ROWS = "a\tAlpha\nb\tBravo\n";

// Colours of the high-contrast variant: the focused row's bar, and the panel.
constexpr uint32_t HIGH_CONTRAST_BAR = 0xFFE700;
constexpr uint32_t HIGH_CONTRAST_PANEL = 0x000000;

class TheSetting : public testing::Test {
protected:
    TheSetting() { set.screen().PaintRoot(0x2040A0); }

    void Choose(const std::string& value) {
        ASSERT_EQ(set.Configure({"set", SETTING, "bool", value}), 0);
    }
    bool Shows(uint32_t colour) { return set.screen().WaitForColour(colour); }
    void ShowAlert() {
        ASSERT_EQ(set.Configure({"set", "memory/tv-viewer/data_service", "int", "0"}), 0);
        application = set.StartApplication();
        ASSERT_TRUE(set.WaitForWindow(Television::ALERT_POPUP));
    }

    Television set;
    std::unique_ptr<ChildProcess> application;
};

TEST_F(TheSetting, GivesTheListHighContrast) {
    Choose("true");
    set.Show(ROWS);
    EXPECT_TRUE(Shows(HIGH_CONTRAST_BAR));
    EXPECT_TRUE(Shows(HIGH_CONTRAST_PANEL));
    EXPECT_FALSE(set.screen().Shows(Television::PANEL_COLOUR));
}

TEST_F(TheSetting, TakesEffectWhileTheListIsOpen) {
    Choose("false");
    ASSERT_NO_FATAL_FAILURE(set.ShowThreeItems());
    Choose("true");
    EXPECT_TRUE(Shows(HIGH_CONTRAST_BAR));
    EXPECT_TRUE(Shows(HIGH_CONTRAST_PANEL));
    set.screen().TypeKey("Down");
    EXPECT_TRUE(set.middleware().SeesSelected("b", "Bravo"));
    ASSERT_EQ(set.Configure({"set", "db/menu/accessibility/text-size", "int", "175"}), 0);
    EXPECT_TRUE(set.screen().WaitUntil(
        [&] { return AreaOf(set.screen().Grab(), HIGH_CONTRAST_BAR).height > 110; }));
    ASSERT_EQ(set.Configure({"set", "db/menu/accessibility/reduced-motion", "bool", "true"}), 0);
    Choose("false");
    EXPECT_TRUE(Shows(Television::FOCUS_COLOUR));
    set.screen().TypeKey("Down");
    EXPECT_TRUE(set.middleware().SeesSelected("c", "Charlie"));
    EXPECT_TRUE(Shows(Television::FOCUS_COLOUR));
}

TEST_F(TheSetting, TakesEffectWhileTheListIsOpenIfItIsTheFirstOneStored) {
    std::filesystem::remove_all(*set.Environment().at("APPLIST_PLATFORM_ROOT") + "/db");
    ASSERT_NO_FATAL_FAILURE(set.ShowThreeItems());
    Choose("true");
    EXPECT_TRUE(Shows(HIGH_CONTRAST_BAR));
}

TEST_F(TheSetting, TakesEffectWhileTheAlertIsOpen) {
    Choose("false");
    ASSERT_NO_FATAL_FAILURE(ShowAlert());
    ASSERT_TRUE(Shows(Television::PANEL_COLOUR));
    const int height = AreaOf(set.screen().Grab(), Television::PANEL_COLOUR).height;
    ASSERT_EQ(set.Configure({"set", "db/menu/accessibility/text-size", "int", "175"}), 0);
    EXPECT_TRUE(set.screen().WaitUntil(
        [&] { return AreaOf(set.screen().Grab(), Television::PANEL_COLOUR).height > height; }));
    Choose("true");
    EXPECT_TRUE(Shows(HIGH_CONTRAST_PANEL));
    EXPECT_TRUE(
        set.screen().WaitUntil([&] { return !set.screen().Shows(Television::PANEL_COLOUR); }));
}

}  // namespace
}  // namespace applist::test
