// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "applist/AppListItem.h"
#include "applist/DefaultAppListItem.h"
#include "applist/DefaultAppListModel.h"

namespace applist::test {
namespace {

bool Match(const std::string& oneId, const std::string& otherId) {
    DefaultAppListItem one("name", oneId);
    DefaultAppListItem other("name", otherId);
    return ApplistItemComparator(&other)(&one);
}

static_assert(!std::is_copy_assignable_v<DefaultAppListItem> &&
                  !std::is_move_assignable_v<DefaultAppListItem>,
              "an item keeps its name and id");

TEST(DefaultAppListItem, IsEmptyByDefault) {
    DefaultAppListItem item;
    EXPECT_EQ(item.GetVisibleName(), "");
    EXPECT_EQ(item.GetUnigueId(), "");
}

TEST(DefaultAppListItem, ReturnsTheNameAndTheIdThatItWasGiven) {
    DefaultAppListItem item("Weather", "w1");
    EXPECT_EQ(item.GetVisibleName(), "Weather");
    EXPECT_EQ(item.GetUnigueId(), "w1");
}

TEST(ApplistItemComparator, MatchesEqualIdsWhateverTheNames) {
    DefaultAppListItem one("Weather", "w1");
    DefaultAppListItem other("Forecast", "w1");
    EXPECT_TRUE(ApplistItemComparator(&other)(&one));
}

TEST(ApplistItemComparator, DoesNotMatchEqualNamesWithDifferentIds) {
    DefaultAppListItem one("Weather", "w1");
    DefaultAppListItem other("Weather", "w2");
    EXPECT_FALSE(ApplistItemComparator(&other)(&one));
}

TEST(ApplistItemComparator, ComparesByteForByte) {
    EXPECT_FALSE(Match("w1", "W1"));
    EXPECT_FALSE(Match("w1", "w1 "));
    EXPECT_FALSE(Match("w1", "w"));
    EXPECT_FALSE(Match(std::string("w\0a", 3), std::string("w\0b", 3)));
    EXPECT_TRUE(Match(std::string("w\0a", 3), std::string("w\0a", 3)));
    EXPECT_TRUE(Match("", ""));
}

/// An item that counts the calls for its id.
class CountingItem : public AppListItem {
public:
    CountingItem(std::string id, int& calls) : m_id(std::move(id)), m_calls(calls) {}
    std::string GetVisibleName() override { return ""; }
    std::string GetUnigueId() override {
        ++m_calls;
        return m_id;
    }

private:
    std::string m_id;
    int& m_calls;
};

class IdCalls : public testing::Test {
protected:
    int calls = 0;
    CountingItem x{"x", calls};
    CountingItem y{"y", calls};
    CountingItem z{"z", calls};
    CountingItem stranger{"?", calls};
    CountingItem secondZ{"z", calls};
};

TEST_F(IdCalls, AreTwoForEachItemThatASearchPasses) {
    const std::vector<AppListItem*> items = {&x, &y, &z};
    EXPECT_EQ(std::find_if(items.begin(), items.end(), ApplistItemComparator(&stranger)),
              items.end());
    EXPECT_EQ(calls, 6);
}

TEST_F(IdCalls, AreFetchedAnewOnEveryComparison) {
    const ApplistItemComparator matches(&x);
    matches(&y);
    matches(&y);
    EXPECT_EQ(calls, 4);
}

TEST_F(IdCalls, AreTwiceTheItemsPassedInTheModelToo) {
    DefaultAppListModel model;
    model.AddItems({&x, &y, &z});
    calls = 0;
    model.RemoveItem(&stranger);
    EXPECT_EQ(calls, 6);
}

TEST_F(IdCalls, EndAtTheFirstMatch) {
    DefaultAppListModel model;
    model.AddItems({&x, &y, &z});
    model.SetSelection(&z);
    calls = 0;
    model.ModifyItem(&y, &secondZ);
    // Two comparisons of the search, one with the selection.
    EXPECT_EQ(calls, 6);
}

}  // namespace
}  // namespace applist::test
