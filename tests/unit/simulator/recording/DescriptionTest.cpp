// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "unit/simulator/recording/Messages.h"

namespace applist::sim {
namespace {

std::string DescribeCall(const Bytes& bytes) {
    RecordedMessage message = Called(1, Function::AddItems);
    message.bytes = bytes;
    return Describe(message);
}

std::string DescribeSignal(const Bytes& bytes) {
    RecordedMessage message = Signalled(Event::ItemChanged);
    message.bytes = bytes;
    return Describe(message);
}

TEST(Description, NamesTheFunctionAndItsItems) {
    EXPECT_EQ(Describe(Called(1, Function::GetAllItems)), "GetAllItems");
    EXPECT_EQ(Describe(Called(1, Function::AddItems, {{"w1", "Weather"}, {"n", "a\nb"}})),
              "AddItems w1=Weather n=a\\x0ab");
}

TEST(Description, CutsLongLists) {
    EXPECT_EQ(Describe(Called(1, Function::AddItems, Items(12, {"a", "A"}))),
              "AddItems a=A a=A a=A a=A a=A a=A a=A a=A a=A a=A and 2 more");
}

TEST(Description, DescribesMalformedCalls) {
    EXPECT_EQ(DescribeCall({}), "0 bytes without a message id");
    EXPECT_EQ(DescribeCall({'\x01', '\x02', '\x03'}), "3 bytes without a message id");
    EXPECT_EQ(DescribeCall({'\x09', '\xD4', '\x07', '\x00', '\x00'}),
              "AddItems with 1 byte, not a list of items");
    EXPECT_EQ(DescribeCall({'\xD9', '\x07', '\x00', '\x00'}), "function 2009");
    EXPECT_EQ(DescribeCall({'\xFF', '\xFF', '\xFF', '\xFF'}), "function -1");
}

TEST(Description, ListsTheItemsOfAReply) {
    EXPECT_EQ(Describe(Replied(1)), "nothing");
    EXPECT_EQ(Describe(Replied(1, Payload({{"w1", "Weather"}}))), "w1=Weather");
    EXPECT_EQ(Describe(Replied(1, Payload({{}}))), "(no item)");
    EXPECT_EQ(Describe(Replied(1, {'\x05'})), "with 1 byte, not a list of items");
}

TEST(Description, NamesEvents) {
    EXPECT_EQ(Describe(Signalled(Event::ItemClicked)), "event 3 ItemClicked");
    EXPECT_EQ(DescribeSignal({'\x07', '\x00', '\x00', '\x00'}), "event 7 Unknown");
    EXPECT_EQ(DescribeSignal({'\x0A', '\x0B', '\x01', '\x00', '\x00', '\x00'}),
              "event 1 ItemChanged with 2 unexpected bytes");
    EXPECT_EQ(DescribeSignal({'\x01'}), "1 byte without a message id");
}

TEST(Description, NamesTheTypeOfContentOtherThanBytes) {
    RecordedMessage message = Signalled(Event::ItemChanged);
    message.text = "(sa{sv})";
    EXPECT_EQ(Describe(message), "content of type (sa{sv})");
}

TEST(Description, NamesAnnouncementsErrorsAndLeavers) {
    EXPECT_EQ(Describe(Announced(Side::Application, ":1.2", "a.b_SERVICE_SYN")), "a.b_SERVICE_SYN");
    EXPECT_EQ(Describe(Failed(1, "no\nreply")), "org.freedesktop.DBus.Error.NoReply: no\\x0areply");
    RecordedMessage left;
    left.kind = MessageKind::Left;
    EXPECT_EQ(Describe(left), "the bus");
}

}  // namespace
}  // namespace applist::sim
