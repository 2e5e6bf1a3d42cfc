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

static_assert(!std::is_copy_assignable_v<DefaultAppListItem> &&
                  !std::is_move_assignable_v<DefaultAppListItem>,
              "an item keeps its name and id");

bool Match(const std::string& oneId, const std::string& otherId) {
    DefaultAppListItem one("name", oneId);
    DefaultAppListItem same("name", otherId);
    DefaultAppListItem other("another name", otherId);
    const bool match = ApplistItemComparator(&other)(&one);
    EXPECT_EQ(ApplistItemComparator(&same)(&one), match) << "depends on the name";
    return match;
}

TEST(ApplistItemComparator, ComparesIdsByteForByteAndNoNames) {
    EXPECT_FALSE(Match("w1", "W1"));
    EXPECT_FALSE(Match("w1", "w1 "));
    EXPECT_FALSE(Match("w1", "w"));
    EXPECT_FALSE(Match("1", "w1"));
    EXPECT_FALSE(Match("w1", "x1"));
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
    DefaultAppListModel model;
};

TEST_F(IdCalls, AreTwoForEachComparison) {
    const ApplistItemComparator matches(&x);
    matches(&y);
    matches(&y);
    EXPECT_EQ(calls, 4);
}

TEST_F(IdCalls, AreTwoForEachItemThatASearchOfTheModelPasses) {
    model.AddItems({&x, &y, &z});
    model.SetSelection(&z);
    calls = 0;
    model.RemoveItem(&stranger);
    EXPECT_EQ(calls, 6);
    calls = 0;
    model.ModifyItem(&y, &secondZ);
    // The search ends at its first match, after two comparisons; one is with the selection.
    EXPECT_EQ(calls, 6);
}

}  // namespace
}  // namespace applist::test
