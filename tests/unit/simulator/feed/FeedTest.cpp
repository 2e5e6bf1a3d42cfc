// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include <gtest/gtest.h>

#include "feed/Feed.h"
#include "feed/ListUpdate.h"

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

const Item NEWS{"n", "News"};
const Item WEATHER{"w", "Weather"};
const Item SPORT{"s", "Sport"};
const Item SPORT_LIVE{"s", "Sport live"};

using Calls = std::vector<FunctionCall>;

// Returns the application's list after the calls.
Items Applied(Items items, const Calls& calls) {
    const auto find = [&](const std::string& id) {
        return std::find_if(items.begin(), items.end(),
                            [&](const Item& item) { return item.id == id; });
    };
    for (const FunctionCall& call : calls) {
        if (call.function == Function::AddItems) {
            items.insert(items.end(), call.items.begin(), call.items.end());
            continue;
        }
        const auto place = find(call.items.at(0).id);
        const bool removes =
            call.function == Function::RemoveItem || find(call.items.at(1).id) != items.end();
        if (removes) {
            items.erase(place);
        } else {
            *place = call.items[1];
        }
    }
    return items;
}

TEST(ListUpdate, MakesNoCallsWithoutChanges) {
    const ListUpdate update = UpdateList({NEWS, WEATHER}, {WEATHER, NEWS});
    EXPECT_EQ(update.calls, Calls{});
    EXPECT_EQ(update.items, (Items{NEWS, WEATHER}));
}

TEST(ListUpdate, AddsAllNewItemsInOneCall) {
    const ListUpdate update = UpdateList({NEWS}, {WEATHER, NEWS, SPORT});
    EXPECT_EQ(update.calls, (Calls{{Function::AddItems, {WEATHER, SPORT}}}));
    EXPECT_EQ(update.items, (Items{NEWS, WEATHER, SPORT}));
    EXPECT_EQ(update.added, 2U);
}

TEST(ListUpdate, RemovesMissingItemsOneByOne) {
    const ListUpdate update = UpdateList({NEWS, WEATHER, SPORT}, {WEATHER});
    EXPECT_EQ(update.calls,
              (Calls{{Function::RemoveItem, {NEWS}}, {Function::RemoveItem, {SPORT}}}));
    EXPECT_EQ(update.removed, 2U);
}

TEST(ListUpdate, RenamesThroughAnUnusedId) {
    const ListUpdate update = UpdateList({NEWS, SPORT}, {NEWS, SPORT_LIVE});
    const Item between{"s~", "Sport live"};
    EXPECT_EQ(update.calls, (Calls{{Function::ModifyItem, {SPORT, between}},
                                   {Function::ModifyItem, {between, SPORT_LIVE}}}));
    EXPECT_EQ(update.items, (Items{NEWS, SPORT_LIVE}));
    EXPECT_EQ(update.renamed, 1U);
    EXPECT_EQ(
        UpdateList({SPORT, {"s~", "x"}}, {SPORT_LIVE, {"s~", "x"}}).calls.at(0).items.at(1).id,
        "s~~");
}

TEST(ListUpdate, ResultsInTheNewList) {
    const std::vector<Items> lists{{},
                                   {NEWS},
                                   {SPORT, NEWS},
                                   {NEWS, WEATHER, SPORT},
                                   {SPORT_LIVE, WEATHER},
                                   {WEATHER, {"n", "Weather"}, SPORT_LIVE}};
    for (const Items& shown : lists) {
        for (const Items& wanted : lists) {
            const ListUpdate update = UpdateList(shown, wanted);
            EXPECT_EQ(Applied(shown, update.calls), update.items);
            EXPECT_TRUE(std::is_permutation(update.items.begin(), update.items.end(),
                                            wanted.begin(), wanted.end()));
        }
    }
}

}  // namespace
}  // namespace applist::sim
