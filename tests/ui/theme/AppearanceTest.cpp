// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The viewer's settings that select the theme.
#include <filesystem>
#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "data/FilePaths.h"
#include "data/SettingsStore.h"
#include "display/Theme.h"
#include "fakes/FakePlatformLog.h"
#include "support/PlatformRoot.h"
#include "ui/theme/ThemedList.h"

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
        EXPECT_EQ(File(), "applist/theme/applist.edj");
        EXPECT_THAT(Logged(), testing::ElementsAre(testing::HasSubstr(
                                  std::string("setting '") + desktop::TEXT_SIZE_KEY +
                                  "' counts as missing: " + desktop::Encode(value) +
                                  " is not 100, 125, 150 or 175")));
    }
}

TEST_F(TheAppearance, UsesTheDefaultForASettingOfAnotherType) {
    Store(desktop::HIGH_CONTRAST_KEY, 1);
    EXPECT_EQ(File(), "applist/theme/applist.edj");
    EXPECT_THAT(Logged(), testing::ElementsAre(testing::HasSubstr(
                              "high-contrast' counts as missing: int:1 is not a bool")));
}

TEST_F(TheAppearance, UsesTheDefaultsAndOneLogLineForEachWhileTheFileIsDamaged) {
    using testing::HasSubstr;
    Store(desktop::TEXT_SIZE_KEY, 175);
    std::ofstream(desktop::PersistentSettingsPath(), std::ios::app) << "not a key file\n";
    for (int time = 0; time < 2; ++time) {
        EXPECT_EQ(File(), "applist/theme/applist.edj");
    }
    EXPECT_THAT(Logged(),
                testing::UnorderedElementsAre(HasSubstr("high-contrast' counts as missing: "),
                                              HasSubstr("text-size' counts as missing: "),
                                              HasSubstr("reduced-motion' counts as missing: ")));
    std::filesystem::remove(desktop::PersistentSettingsPath());
    Store(desktop::TEXT_SIZE_KEY, 175);
    EXPECT_EQ(File(), "applist/theme/applist-175.edj");
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
