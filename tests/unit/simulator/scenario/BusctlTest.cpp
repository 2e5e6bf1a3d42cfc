// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "scenario/Statement.h"

namespace applist::sim {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

const std::string OBJECT =
    "/org/vantu/javamw/CommunicationChannel/Applist org.vantu.javamw.DbusCommunication ";
const BusctlTarget TARGET{"", ":1.5"};

Result<std::vector<std::string>> Lines(const std::string& statement,
                                       const BusctlTarget& target = TARGET) {
    const ParsedLine parsed = ParseStatement(statement);
    EXPECT_TRUE(parsed.statement) << statement;
    return BusctlLines(parsed.statement->action, target);
}

void ExpectLine(const std::string& statement, const std::string& line) {
    const auto lines = Lines(statement);
    ASSERT_TRUE(lines) << lines.error();
    EXPECT_THAT(*lines, ElementsAre(line));
}

TEST(Busctl, CallsWithEachByte) {
    ExpectLine("call GetAllItems", "busctl --system call :1.5 " + OBJECT + "Send ay 4 210 7 0 0");
    ExpectLine("add w=\xFF", "busctl --system call :1.5 " + OBJECT +
                                 "Send ay 14 1 0 0 0 255 1 0 0 0 119 212 7 0 0");
    ExpectLine("send-hex 01ff", "busctl --system call :1.5 " + OBJECT + "Send ay 2 1 255");
    ExpectLine("send-short 0", "busctl --system call :1.5 " + OBJECT + "Send ay 0");
}

TEST(Busctl, EmitsSignalsToTheApplicationAlone) {
    ExpectLine("signal-hex 0a",
               "busctl --system --destination=:1.5 emit " + OBJECT + "SendSignal ay 1 10");
}

TEST(Busctl, NamesAnotherBus) {
    const auto lines = Lines("clear", {"unix:path=/a b", ":1.5"});
    ASSERT_TRUE(lines);
    EXPECT_THAT(*lines, ElementsAre("busctl --address='unix:path=/a b' call :1.5 " + OBJECT +
                                    "Send ay 4 211 7 0 0"));
}

TEST(Busctl, AnnouncesByAcquiringANameUntilItExits) {
    ExpectLine("announce syn-ack",
               "busctl --system call org.freedesktop.DBus /org/freedesktop/DBus "
               "org.freedesktop.DBus RequestName su org.vantu.JavaMW.Applist_CLIENT_SYN_ACK 4");
}

TEST(Busctl, ReadsTheValueThatAnExpectationChecks) {
    const std::string list = "busctl --system call :1.5 " + OBJECT + "Send ay 4 210 7 0 0";
    ExpectLine("expect list empty", list);
    ExpectLine("expect count 3", list);
    ExpectLine("expect selection none",
               "busctl --system call :1.5 " + OBJECT + "Send ay 4 209 7 0 0");
}

TEST(Busctl, WatchesForEventsAndAnnouncements) {
    const std::string signals =
        "busctl --system monitor --match='type='\\''signal'\\'',"
        "interface='\\''org.vantu.javamw.DbusCommunication'\\'''";
    ExpectLine("expect event ItemChanged", signals);
    ExpectLine("expect no event for 1s", signals);
    ExpectLine("expect announcement syn",
               "busctl --system monitor --match='type='\\''signal'\\'',"
               "sender='\\''org.freedesktop.DBus'\\'',member='\\''NameOwnerChanged'\\'',"
               "arg0namespace='\\''org.vantu.JavaMW'\\'''");
}

TEST(Busctl, RepeatsAFewCopiesAndCountsTheOthers) {
    const auto few = Lines("flood 2 add {n}=N");
    ASSERT_TRUE(few);
    EXPECT_THAT(*few, SizeIs(2));
    EXPECT_NE(few->front(), few->back());
    const auto many = Lines("flood 12 clear");
    ASSERT_TRUE(many);
    EXPECT_THAT(*many, SizeIs(11));
    EXPECT_EQ(many->back(), "# and 2 more like these");
}

TEST(Busctl, RefusesStatementsWithoutABusctlEquivalent) {
    for (const char* statement : {"join", "vanish", "wait 1s", "note text", "timeout 1s",
                                  "handshake manual", "expect reply empty"}) {
        EXPECT_EQ(Lines(statement).error(), "busctl cannot do this") << statement;
    }
    EXPECT_EQ(Lines("send-huge 1M").error(), "1048576 bytes are too many for a command line");
    EXPECT_EQ(Lines("clear", {"", ""}).error(),
              "no application has announced itself; \"wait connected\" waits for one");
}

}  // namespace
}  // namespace applist::sim
