// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "applist/DefaultAppListItem.h"
#include "applist/RemoteAppListItem.h"
#include "unit/ipc/WireBytes.h"

namespace applist::test {
namespace {

RemoteAppListItem Item(const std::string& name, const std::string& id) {
    DefaultAppListItem item(name, id);
    return RemoteAppListItem(item);
}

std::string Written(const std::string& name, const std::string& id) {
    std::ostringstream out;
    out << Item(name, id);
    return out.str();
}

void ExpectRoundTrip(const std::string& name, const std::string& id) {
    std::istringstream in(Written(name, id));
    RemoteAppListItem item;
    EXPECT_TRUE(in >> item);
    EXPECT_EQ(item.GetVisibleName(), name);
    EXPECT_EQ(item.GetUnigueId(), id);
    EXPECT_EQ(in.peek(), std::istringstream::traits_type::eof());
}

TEST(RemoteAppListItem, IsEmptyByDefault) {
    RemoteAppListItem item;
    EXPECT_EQ(item.GetVisibleName(), "");
    EXPECT_EQ(item.GetUnigueId(), "");
}

TEST(RemoteAppListItem, TakesOverAnyItemsNameAndId) {
    DefaultAppListItem original("Weather", "w1");
    RemoteAppListItem item(static_cast<AppListItem&>(original));
    EXPECT_EQ(item.GetVisibleName(), "Weather");
    EXPECT_EQ(item.GetUnigueId(), "w1");
}

TEST(ItemWire, WritesEachStringAfterItsLength) {
    const std::string expected("\x07\x00\x00\x00Weather\x02\x00\x00\x00w1", 17);
    EXPECT_EQ(Written("Weather", "w1"), expected);
}

TEST(ItemWire, ReadsEachStringAfterItsLength) {
    std::istringstream in(std::string("\x07\x00\x00\x00Weather\x02\x00\x00\x00w1", 17));
    RemoteAppListItem item;
    EXPECT_TRUE(in >> item);
    EXPECT_EQ(item.GetVisibleName(), "Weather");
    EXPECT_EQ(item.GetUnigueId(), "w1");
}

TEST(ItemWire, KeepsEmptyStringsApart) {
    ExpectRoundTrip("", "");
    ExpectRoundTrip("Weather", "");
    ExpectRoundTrip("", "w1");
}

TEST(ItemWire, KeepsEveryByte) {
    std::string all;
    for (int value = 0; value < 256; ++value) {
        all += static_cast<char>(value);
    }
    ExpectRoundTrip(all, all + all);
}

TEST(ItemWire, KeepsStringsOfAnyLength) {
    for (const size_t size : {15U, 16U, 255U, 256U, 4095U, 4096U, 4097U, 8192U, 100000U}) {
        ExpectRoundTrip(std::string(size, 'n'), std::string(size + 1, 'i'));
    }
}

TEST(ItemWire, WritesLengthsAbove255InFull) {
    EXPECT_EQ(Written(std::string(0x10203, 'n'), "").substr(0, 4),
              std::string("\x03\x02\x01\x00", 4));
}

TEST(ItemWire, ReadsItemsBackToBack) {
    std::stringstream stream;
    stream << Item("Weather", "w1") << Item("", "") << Item("News", "n1");
    RemoteAppListItem first;
    RemoteAppListItem second = Item("old", "old");
    RemoteAppListItem third;
    EXPECT_TRUE(stream >> first >> second >> third);
    EXPECT_EQ(first.GetUnigueId(), "w1");
    EXPECT_EQ(second.GetUnigueId(), "");
    EXPECT_EQ(second.GetVisibleName(), "");
    EXPECT_EQ(third.GetVisibleName(), "News");
    EXPECT_FALSE(stream >> first);
}

TEST(ItemWire, LeavesWhatFollowsAnItem) {
    std::istringstream in(ItemBytes("Weather", "w1") + "rest");
    RemoteAppListItem item;
    EXPECT_TRUE(in >> item);
    std::string rest;
    in >> rest;
    EXPECT_EQ(rest, "rest");
}

TEST(ItemWire, IgnoresTheStreamsFormatting) {
    std::ostringstream out;
    out.width(40);
    out.fill('*');
    out << std::hex << Item("Weather", "w1");
    EXPECT_EQ(out.str(), ItemBytes("Weather", "w1"));
}

TEST(ItemWire, WritesNothingToAFailedStream) {
    std::ostringstream out;
    out.setstate(std::ios_base::failbit);
    out << Item("Weather", "w1");
    EXPECT_EQ(out.str(), "");
}

}  // namespace
}  // namespace applist::test
