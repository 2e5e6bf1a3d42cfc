// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "data/KeyTable.h"
#include "support/TemporaryDir.h"

namespace applist::desktop {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST(KeyTable, NamesTheKeysOfKeyboardsAndReceivers) {
    const KeyTable table;
    EXPECT_STREQ(table.Find("Escape"), "XF86Back");
    for (const char* key : {"F10", "Keycode-182", "XF86Close"}) {
        EXPECT_STREQ(table.Find(key), "XF86Exit") << key;
    }
    for (const char* key : {"KP_Enter", "XF86Select", "XF86OK", "Keycode-360", "Keycode-361"}) {
        EXPECT_STREQ(table.Find(key), "Return") << key;
    }
    EXPECT_STREQ(table.Find("XF86ChannelUp"), "Prior");
    EXPECT_STREQ(table.Find("XF86ChannelDown"), "Next");
}

TEST(KeyTable, LeavesOtherKeysTheirNames) {
    for (const char* key : {"Up", "Down", "Left", "Right", "Return", "XF86Back", "XF86Exit", "F1",
                            "Prior", "Next", "escape", "Keycode-18", "Keycode-1820", ""}) {
        EXPECT_EQ(KeyTable().Find(key), nullptr) << key;
    }
}

TEST(KeyTable, TakesLinesOfASet) {
    KeyTable table;
    EXPECT_THAT(table.Add("# the set's receiver\n[keys]\n\nF1=XF86Back\r\n  F2 =\tNext\nF10=Up"),
                IsEmpty());
    EXPECT_STREQ(table.Find("F1"), "XF86Back");
    EXPECT_STREQ(table.Find("F2"), "Next");
    EXPECT_STREQ(table.Find("F10"), "Up") << "replaces the built-in entry";
    EXPECT_STREQ(table.Find("Escape"), "XF86Back");
}

TEST(KeyTable, GivesAKeyItsOwnNameBack) {
    KeyTable table;
    EXPECT_THAT(table.Add("F10=F10\nUp=Up\n"), IsEmpty());
    EXPECT_EQ(table.Find("F10"), nullptr);
    EXPECT_EQ(table.Find("Up"), nullptr);
}

TEST(KeyTable, ReportsEachBadLineAndTakesTheOthers) {
    KeyTable table;
    EXPECT_THAT(
        table.Add("F1=Up\nF2\n=Up\nF3=\nF4=Fire\n[other]\nF5=Down\n"),
        ElementsAre("line 2: not KEY=NAME", "line 3: not KEY=NAME",
                    "line 4: not a key of the remote control: ",
                    "line 5: not a key of the remote control: Fire", "line 6: not KEY=NAME"));
    EXPECT_STREQ(table.Find("F1"), "Up");
    EXPECT_STREQ(table.Find("F5"), "Down");
    EXPECT_EQ(table.Find("F4"), nullptr);
}

TEST(KeyTable, IsTheBuiltInOneWithoutAFile) {
    const test::TemporaryDir folder;
    const auto reading = ReadKeyTable(folder.path() / "keys.ini");
    EXPECT_THAT(reading.problems, IsEmpty());
    EXPECT_EQ(reading.table.All(), KeyTable().All());
}

TEST(KeyTable, NamesTheFileInItsProblems) {
    const test::TemporaryDir folder;
    const auto reading = ReadKeyTable(folder.path());
    ASSERT_EQ(reading.problems.size(), 1U);
    EXPECT_THAT(reading.problems[0], HasSubstr(folder.path().string() + ": cannot be read: "));
}

}  // namespace
}  // namespace applist::desktop
