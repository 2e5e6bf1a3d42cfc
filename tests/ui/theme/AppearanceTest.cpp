// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The viewer's settings that select the theme.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "data/SettingsStore.h"
#include "display/Theme.h"
#include "fakes/FakePlatformLog.h"
#include "ui/theme/ThemedList.h"
#include "unit/visibility/PlatformRoot.h"

namespace applist::test {
namespace {

using desktop::Setting;

class TheAppearance : public testing::Test {
protected:
    static std::string File() { return desktop::ThemeFileOf(desktop::ReadAppearance()); }
    static void Store(const char* key, Setting value) {
        ASSERT_EQ(desktop::WriteSetting(key, value), std::nullopt);
    }

    static std::vector<std::string> Logged() { return LogMessages(); }

    PlatformRoot m_root;
};

TEST_F(TheAppearance, IsTheStandardOneWithoutSettings) {
    EXPECT_EQ(File(), "applist/theme/applist.edj");
    EXPECT_TRUE(Logged().empty());
}

TEST_F(TheAppearance, FollowsEachSetting) {
    for (const int size : {125, 150, 175}) {
        Store(desktop::TEXT_SIZE_KEY, size);
        EXPECT_EQ(File(), "applist/theme/applist-" + std::to_string(size) + ".edj");
    }
    Store(desktop::HIGH_CONTRAST_KEY, true);
    EXPECT_EQ(File(), "applist/theme/applist-high-contrast-175.edj");
    Store(desktop::REDUCED_MOTION_KEY, true);
    EXPECT_EQ(File(), "applist/theme/applist-high-contrast-175-still.edj");
    Store(desktop::TEXT_SIZE_KEY, 100);
    EXPECT_EQ(File(), "applist/theme/applist-high-contrast-still.edj");
    EXPECT_TRUE(Logged().empty());
}

TEST_F(TheAppearance, UsesTheDefaultAndOneLogLineForAnInvalidValue) {
    for (const Setting& value : {Setting(0), Setting(110), Setting(200), Setting(true)}) {
        Store(desktop::TEXT_SIZE_KEY, value);
        ClearLog();
        EXPECT_EQ(File(), "applist/theme/applist.edj");
        EXPECT_THAT(Logged(), testing::ElementsAre(testing::HasSubstr(
                                  std::string("setting '") + desktop::TEXT_SIZE_KEY + "' is " +
                                  desktop::Encode(value) + ", not 100, 125, 150 or 175")));
    }
}

TEST_F(TheAppearance, UsesTheDefaultForASettingOfAnotherType) {
    Store(desktop::HIGH_CONTRAST_KEY, 1);
    EXPECT_EQ(File(), "applist/theme/applist.edj");
    EXPECT_THAT(Logged(), testing::ElementsAre(testing::HasSubstr(
                              "high-contrast' is int:1, not a bool; the default is used")));
}

TEST(TheTheme, AnimatesScrollingOnlyWithMotion) {
    const HeadlessToolkit toolkit;
    const double animated = elm_config_scroll_bring_in_scroll_friction_get();
    EXPECT_GT(animated, 0.0);
    desktop::LoadTheme(ThemeFile({.reducedMotion = true}));
    EXPECT_EQ(elm_config_scroll_bring_in_scroll_friction_get(), 0.0);
    desktop::LoadTheme(ThemeFile({}));
    EXPECT_EQ(elm_config_scroll_bring_in_scroll_friction_get(), animated);
}

}  // namespace
}  // namespace applist::test
