// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "scenario/Statement.h"

namespace applist::sim {
namespace {

Items Parsed(Function function, const std::vector<std::string>& arguments) {
    const auto items = ParseCallArguments(function, arguments);
    EXPECT_TRUE(items) << items.error();
    return items ? *items : Items();
}

std::string Refused(Function function, const std::vector<std::string>& arguments) {
    const auto items = ParseCallArguments(function, arguments);
    EXPECT_FALSE(items);
    return items.error();
}

TEST(CallArguments, GiveOneItemByIdAndOptionalName) {
    EXPECT_EQ(Parsed(Function::SetSelection, {"w1"}), (Items{{"w1", ""}}));
    EXPECT_EQ(Parsed(Function::SetSelection, {"w1", "Weather"}), (Items{{"w1", "Weather"}}));
    EXPECT_EQ(Parsed(Function::SetSelection, {""}), (Items{{"", ""}}));
    EXPECT_EQ(Parsed(Function::RemoveItem, {"a=b"}), (Items{{"a=b", ""}}));
}

TEST(CallArguments, GiveAnyNumberOfPairs) {
    EXPECT_EQ(Parsed(Function::AddItems, {}), Items());
    EXPECT_EQ(Parsed(Function::AddItems, {"w1=Weather", "n=", "=x", "e=a=b"}),
              (Items{{"w1", "Weather"}, {"n", ""}, {"", "x"}, {"e", "a=b"}}));
}

TEST(CallArguments, GiveOnePair) {
    EXPECT_EQ(Parsed(Function::AddItemAtEnd, {"w1=Weather"}), (Items{{"w1", "Weather"}}));
}

TEST(CallArguments, GiveTheOldAndTheNewItem) {
    EXPECT_EQ(Parsed(Function::ModifyItem, {"w1", "w2=Wind"}), (Items{{"w1", ""}, {"w2", "Wind"}}));
    EXPECT_EQ(Parsed(Function::ModifyItem, {"w1=Weather", "w2=Wind"}),
              (Items{{"w1", "Weather"}, {"w2", "Wind"}}));
}

TEST(CallArguments, AreEmptyForOtherFunctions) {
    for (const Function function : {Function::GetSelection, Function::GetAllItems,
                                    Function::RemoveAllItems, Function::SetClicked}) {
        EXPECT_EQ(Parsed(function, {}), Items());
        EXPECT_EQ(Refused(function, {"x"}), std::string(NameOf(function)) + " takes no arguments");
    }
}

TEST(CallArguments, AreRefusedWithTheCorrectSyntax) {
    EXPECT_EQ(Refused(Function::SetSelection, {}), "SetSelection takes ID [NAME]");
    EXPECT_EQ(Refused(Function::SetSelection, {"a", "b", "c"}), "SetSelection takes ID [NAME]");
    EXPECT_EQ(Refused(Function::RemoveItem, {}), "RemoveItem takes ID [NAME]");
    EXPECT_EQ(Refused(Function::AddItems, {"a=b", "c"}), "AddItems takes ID=NAME...");
    EXPECT_EQ(Refused(Function::AddItemAtEnd, {}), "AddItemAtEnd takes ID=NAME");
    EXPECT_EQ(Refused(Function::AddItemAtEnd, {"a=b", "c=d"}), "AddItemAtEnd takes ID=NAME");
    EXPECT_EQ(Refused(Function::AddItemAtEnd, {"a"}), "AddItemAtEnd takes ID=NAME");
    EXPECT_EQ(Refused(Function::ModifyItem, {"a"}), "ModifyItem takes ID ID=NAME");
    EXPECT_EQ(Refused(Function::ModifyItem, {"a", "b"}), "ModifyItem takes ID ID=NAME");
}

}  // namespace
}  // namespace applist::sim
