// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "link/Protocol.h"

namespace applist::sim {
namespace {

using std::string_literals::operator""s;

Bytes ToBytes(const std::string& text) {
    return {text.begin(), text.end()};
}

const std::string WEATHER_FORM = "\x07\0\0\0Weather\x02\0\0\0w1"s;

TEST(Protocol, NumbersTheFunctionsFrom2000To2008) {
    int32_t number = 2000;
    for (const char* name :
         {"SetSelection", "GetSelection", "GetAllItems", "RemoveAllItems", "AddItems",
          "AddItemAtEnd", "SetClicked", "RemoveItem", "ModifyItem"}) {
        const auto function = FunctionByName(name);
        ASSERT_TRUE(function) << name;
        EXPECT_EQ(static_cast<int32_t>(*function), number++);
        EXPECT_EQ(NameOf(*function), name);
    }
    EXPECT_EQ(number, 2009);
}

TEST(Protocol, RejectsUnknownFunctionNames) {
    EXPECT_FALSE(FunctionByName(""));
    EXPECT_FALSE(FunctionByName("getselection"));
    EXPECT_FALSE(FunctionByName("2001"));
}

TEST(Protocol, EncodesACallAsItemsFollowedByTheId) {
    EXPECT_EQ(EncodeCall(Function::GetAllItems, {}), ToBytes("\xD2\x07\0\0"s));
    EXPECT_EQ(EncodeCall(Function::ModifyItem, {{"w1", "Weather"}, {"w1", "Weather"}}),
              ToBytes(WEATHER_FORM + WEATHER_FORM + "\xD8\x07\0\0"s));
}

TEST(Protocol, ReadsTheItemsOfAReply) {
    EXPECT_EQ(DecodeItems({}), Items());
    EXPECT_EQ(DecodeItems(ToBytes(WEATHER_FORM + "\0\0\0\0\0\0\0\0"s)),
              (Items{{"w1", "Weather"}, {"", ""}}));
}

TEST(Protocol, RefusesAReplyThatEndsWithinAnItem) {
    for (size_t size = 1; size < WEATHER_FORM.size(); ++size) {
        EXPECT_FALSE(DecodeItems(ToBytes(WEATHER_FORM.substr(0, size)))) << size;
        EXPECT_FALSE(DecodeItems(ToBytes(WEATHER_FORM + WEATHER_FORM.substr(0, size)))) << size;
    }
}

TEST(Protocol, CarriesAnyBytesBothWays) {
    const Items items{{"\0\n\t="s, std::string(70'000, '\xFF')}, {"", "x"}};
    Bytes message = EncodeCall(Function::AddItems, items);
    message.resize(message.size() - 4);
    EXPECT_EQ(DecodeItems(message), items);
}

TEST(Protocol, ReadsTheEventOfANotification) {
    const std::pair<const char*, Event> events[]{{"ItemChanged", Event::ItemChanged},
                                                 {"ItemSelected", Event::ItemSelected},
                                                 {"ItemClicked", Event::ItemClicked},
                                                 {"LocalCreated", Event::LocalCreated}};
    char number = 1;
    for (const auto& [name, event] : events) {
        const auto notification = DecodeNotification({number++, 0, 0, 0});
        ASSERT_TRUE(notification);
        EXPECT_EQ(notification->event, event);
        EXPECT_EQ(notification->payloadSize, 0U);
        EXPECT_EQ(NameOf(event), name);
    }
}

TEST(Protocol, ReadsTheEventFromTheEnd) {
    const auto notification = DecodeNotification(ToBytes("abc\x02\0\0\0"s));
    ASSERT_TRUE(notification);
    EXPECT_EQ(notification->event, Event::ItemSelected);
    EXPECT_EQ(notification->payloadSize, 3U);
}

TEST(Protocol, KeepsTheNumberOfAnUnknownEvent) {
    const auto notification = DecodeNotification(ToBytes("\xFE\xFF\xFF\xFF"s));
    ASSERT_TRUE(notification);
    EXPECT_EQ(static_cast<int32_t>(notification->event), -2);
    EXPECT_EQ(NameOf(notification->event), "Unknown");
}

TEST(Protocol, RefusesANotificationShorterThanAnEvent) {
    EXPECT_FALSE(DecodeNotification({}));
    EXPECT_FALSE(DecodeNotification({1, 0, 0}));
}

}  // namespace
}  // namespace applist::sim
