// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Which users may call the application. The receiver accepts every call, so only the bus can deny
// one.
#include <algorithm>

#include "bus/policy/PolicyTest.h"

namespace applist::test {
namespace {

using Lines = std::vector<std::string>;

const std::string PATH = CHANNEL_PATH;
const std::string INTERFACE = CHANNEL_INTERFACE;
constexpr const char* ANSWERED = ": answered";
constexpr const char* DENIED = ": org.freedesktop.DBus.Error.AccessDenied";

/// All calls to try on the application: its method, the method without an interface, a method that
/// the bus library answers for every object, and a call to another object.
const std::vector<Lines> CALLS{
    {PATH, INTERFACE, "Send"},
    {PATH, "-", "Send"},
    {PATH, "org.freedesktop.DBus.Introspectable", "Introspect"},
    {PATH, "org.freedesktop.DBus.Properties", "GetAll"},
    {PATH, "org.freedesktop.DBus.Peer", "Ping"},
    {"/org/vantu/javamw/CommunicationChannel", INTERFACE, "Send"},
};

std::string Joined(const Lines& words) {
    std::string text;
    for (const std::string& word : words) {
        text += (text.empty() ? "" : " ") + word;
    }
    return text;
}

/// Makes all those calls to the receiver as user and returns the outcomes. The bus must log each
/// denial.
Lines CallAll(const PolicyBus& bus, const User& user, const Actor& receiver) {
    Lines commands;
    for (const Lines& call : CALLS) {
        commands.insert(commands.end(), {"call", receiver.UniqueName()});
        commands.insert(commands.end(), call.begin(), call.end());
    }
    Actor caller(bus, user, commands);
    Lines lines = caller.Lines({{receiver.UniqueName(), "RECEIVER"}});
    const auto denied = static_cast<size_t>(std::count_if(
        lines.begin(), lines.end(), [](const auto& line) { return line.ends_with(DENIED); }));
    EXPECT_EQ(bus.AwaitDenials(caller.UniqueName(), denied), denied) << user.name;
    return lines;
}

/// The expected outcomes if only the first calls, as many as given, are answered.
Lines Answered(size_t count) {
    Lines lines;
    for (const Lines& call : CALLS) {
        lines.push_back("call RECEIVER " + Joined(call) +
                        (lines.size() < count ? ANSWERED : DENIED));
    }
    return lines;
}

class PolicyOfCalls : public PolicyTest {};
INSTANTIATE_TEST_SUITE_P(On, PolicyOfCalls, testing::ValuesIn(AllPlaces()), NameOfPlace);

TEST_P(PolicyOfCalls, LetsOnlyTheMiddlewareCallAndOnlySend) {
    const auto bus = MakeBus();
    Actor application(*bus, APPLICATION_USER, {"receive"});
    application.AwaitReceiving();
    EXPECT_EQ(CallAll(*bus, STRANGER, application), Answered(0));
    EXPECT_EQ(CallAll(*bus, ROOT, application), Answered(0));
    EXPECT_EQ(CallAll(*bus, APPLICATION_USER, application), Answered(0));
    EXPECT_EQ(CallAll(*bus, MIDDLEWARE_USER, application), Answered(1));
    application.End();
    const Lines arrived = application.Lines();
    ASSERT_EQ(arrived.size(), 3U) << testing::PrintToString(arrived);
    EXPECT_THAT(arrived[1], testing::EndsWith(" " + PATH + " " + INTERFACE + " Send"));
}

// The middleware cannot be made to send a list to another program.
TEST_P(PolicyOfCalls, OnlyTheApplicationReceivesACall) {
    const auto bus = MakeBus();
    Actor stranger(*bus, STRANGER, {"receive"});
    stranger.AwaitReceiving();
    EXPECT_EQ(CallAll(*bus, MIDDLEWARE_USER, stranger), Answered(0));
    stranger.End();
    EXPECT_EQ(stranger.Lines(), (Lines{"receiving", "receive: ended"}));
}

// The policy does not depend on a bus that denies calls by default.
TEST_P(PolicyOfCalls, TheChannelStaysClosedWhereEverythingElseIsAllowed) {
    const PolicyBus bus(GetParam().daemon, PolicyBus::OPEN_RULES, BUS_POLICY);
    Actor application(bus, APPLICATION_USER, {"receive"});
    application.AwaitReceiving();
    Lines expected = Answered(0);
    expected.back() = Answered(CALLS.size()).back();
    EXPECT_EQ(CallAll(bus, STRANGER, application), expected);
}

TEST_P(PolicyOfCalls, AStrangersCallsArriveWhereEverythingIsAllowed) {
    const PolicyBus bus(GetParam().daemon, PolicyBus::OPEN_RULES, "");
    Actor application(bus, APPLICATION_USER, {"receive"});
    application.AwaitReceiving();
    EXPECT_EQ(CallAll(bus, STRANGER, application), Answered(CALLS.size()));
}

}  // namespace
}  // namespace applist::test
