// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include <gtest/gtest.h>

#include "feed/ListUpdate.h"

namespace applist::sim {
namespace {

const Item NEWS{"n", "News"};
const Item WEATHER{"w", "Weather"};
const Item SPORT{"s", "Sport"};
const Item SPORT_LIVE{"s", "Sport live"};

using Calls = std::vector<ListCall>;

// Returns the application's list after the calls.
Items Applied(Items items, const Calls& calls) {
    const auto find = [&](const std::string& id) {
        return std::find_if(items.begin(), items.end(),
                            [&](const Item& item) { return item.id == id; });
    };
    for (const ListCall& call : calls) {
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
