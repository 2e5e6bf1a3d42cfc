// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "feed/Feed.h"

namespace applist::sim {
namespace {

using std::string_literals::operator""s;

Items Parsed(const std::string& text) {
    const auto items = ParseItemText(text);
    EXPECT_TRUE(items) << items.error();
    return items ? *items : Items();
}

std::string Refused(const std::string& text) {
    const auto items = ParseItemText(text);
    EXPECT_FALSE(items);
    return items.error();
}

TEST(ItemText, GivesAnItemForEachLine) {
    EXPECT_EQ(Parsed("w1\tWeather\nn1\tNovit\u00e0 e notizie\n"),
              (Items{{"w1", "Weather"}, {"n1", "Novit\u00e0 e notizie"}}));
}

TEST(ItemText, SkipsBlankLinesAndComments) {
    EXPECT_EQ(Parsed("# list\n\nw1\tWeather\n#n1\tNews\n\n"), (Items{{"w1", "Weather"}}));
}

TEST(ItemText, MayEndWithoutALineEnd) {
    EXPECT_EQ(Parsed("w1\tWeather"), (Items{{"w1", "Weather"}}));
}

TEST(ItemText, TakesTheLineEndsOfOtherSystems) {
    EXPECT_EQ(Parsed("w1\tWeather\r\n\r\nn1\tNews\r\n"),
              (Items{{"w1", "Weather"}, {"n1", "News"}}));
}

TEST(ItemText, TakesAllTextAfterTheFirstTabAsTheName) {
    EXPECT_EQ(Parsed("w1\ta\tb # c\n"), (Items{{"w1", "a\tb # c"}}));
    EXPECT_EQ(Parsed("w1\t\n"), (Items{{"w1", ""}}));
}

TEST(ItemText, MayHoldNothing) {
    EXPECT_EQ(Parsed(""), Items());
    EXPECT_EQ(Parsed("# nothing\n"), Items());
}

TEST(ItemText, IsRefusedWithTheNumberOfTheWrongLine) {
    EXPECT_EQ(Refused("w1\tWeather\n\nWeather\n"), "3: no tab between id and name");
    EXPECT_EQ(Refused("\tWeather\n"), "1: empty id");
    EXPECT_EQ(Refused("# x\nw1\tCaff\xE8\n"), "2: not UTF-8");
    EXPECT_EQ(Refused("w1\ta\0b\n"s), "1: not UTF-8");
    EXPECT_EQ(Refused("w1\tWeather\nn1\tNews\nw1\tWind\n"), "3: id 'w1' is already in line 1");
}

}  // namespace
}  // namespace applist::sim
