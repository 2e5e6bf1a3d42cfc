// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The installed policy of the bus: which users may own names, call the application and send
// signals.
#include <algorithm>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/PolicyBus.h"

namespace applist::test {
namespace {

using Lines = std::vector<std::string>;

const std::string PATH = CHANNEL_PATH;
const std::string INTERFACE = CHANNEL_INTERFACE;

/// A bus to test a policy on; the parameter of the tests.
struct Place {
    PolicyBus::Daemon daemon;
    std::string name;
    std::string rules;
};
std::ostream& operator<<(std::ostream& out, const Place& place) {
    return out << place.name;
}

/// Both daemons, each with both sets of rules.
std::vector<Place> AllPlaces() {
    std::vector<Place> places;
    for (const auto daemon : {PolicyBus::Daemon::DBUS_DAEMON, PolicyBus::Daemon::DBUS_BROKER}) {
        places.push_back({daemon, NameOf(daemon) + "AsUsual", PolicyBus::USUAL_RULES});
        places.push_back({daemon, NameOf(daemon) + "Closed", PolicyBus::CLOSED_RULES});
    }
    return places;
}

std::string NameOfPlace(const testing::TestParamInfo<Place>& info) {
    return info.param.name;
}

/// Uses the installed policy on the bus that the parameter describes. Needs several users, and so
/// root.
class PolicyTest : public testing::TestWithParam<Place> {
protected:
    void SetUp() override { SkipUnlessRoot(); }
    std::unique_ptr<PolicyBus> MakeBus() const {
        return std::make_unique<PolicyBus>(GetParam().daemon, GetParam().rules, BUS_POLICY);
    }
};

// ----
// Which users may call the application. The receiver accepts every call, so only the bus can deny
// one.

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

// ----
// Which users may own the six names of the handshake, and similar names. Every user requests each
// of them.

using Names = std::vector<std::string>;

const Names SERVICE_NAMES{"org.vantu.JavaMW.Applist_SERVICE_SYN",
                          "org.vantu.JavaMW.Applist_SERVICE_SYN_ACK",
                          "org.vantu.JavaMW.Applist_SERVICE_ACK"};
const Names CLIENT_NAMES{"org.vantu.JavaMW.Applist_CLIENT_SYN",
                         "org.vantu.JavaMW.Applist_CLIENT_SYN_ACK",
                         "org.vantu.JavaMW.Applist_CLIENT_ACK"};
// The application must not own a permanent name under which it could be called.
const Names OTHER_NAMES{"org.vantu.JavaMW.Applist", "org.vantu.applist"};

Names AllNames() {
    Names all = SERVICE_NAMES;
    all.insert(all.end(), CLIENT_NAMES.begin(), CLIENT_NAMES.end());
    all.insert(all.end(), OTHER_NAMES.begin(), OTHER_NAMES.end());
    return all;
}

/// The expected output of a bus_actor that requests all names and is granted these.
std::vector<std::string> Grants(const Names& granted) {
    std::vector<std::string> lines;
    for (const std::string& name : AllNames()) {
        const bool isGranted = std::find(granted.begin(), granted.end(), name) != granted.end();
        lines.push_back("own " + name + ": " +
                        (isGranted ? "(1,)" : "org.freedesktop.DBus.Error.AccessDenied"));
    }
    return lines;
}

std::vector<std::string> Ask(const PolicyBus& bus, const User& user) {
    std::vector<std::string> commands;
    for (const std::string& name : AllNames()) {
        commands.insert(commands.end(), {"own", name});
    }
    return Actor(bus, user, commands).Lines();
}

class PolicyOfNames : public PolicyTest {};
INSTANTIATE_TEST_SUITE_P(On, PolicyOfNames, testing::ValuesIn(AllPlaces()), NameOfPlace);

TEST_P(PolicyOfNames, GrantsEachSideItsThreeAndOtherUsersNone) {
    const auto bus = MakeBus();
    EXPECT_EQ(Ask(*bus, APPLICATION_USER), Grants(SERVICE_NAMES));
    EXPECT_EQ(Ask(*bus, MIDDLEWARE_USER), Grants(CLIENT_NAMES));
    EXPECT_EQ(Ask(*bus, STRANGER), Grants({}));
    EXPECT_EQ(Ask(*bus, ROOT), Grants({}));
}

// A mistyped user name or a missing account must not grant anything.
TEST_P(PolicyOfNames, GrantsNoneWhenTheUsersAreUnknown) {
    const PolicyBus bus(GetParam().daemon, GetParam().rules, POLICY_OF_UNKNOWN_USERS);
    for (const User* user : {&APPLICATION_USER, &MIDDLEWARE_USER, &STRANGER, &ROOT}) {
        EXPECT_EQ(Ask(bus, *user), Grants({})) << user->name;
    }
}

TEST_P(PolicyOfNames, OneUserMayBeBothSides) {
    const PolicyBus bus(GetParam().daemon, GetParam().rules, POLICY_OF_ONE_USER);
    Names both = SERVICE_NAMES;
    both.insert(both.end(), CLIENT_NAMES.begin(), CLIENT_NAMES.end());
    EXPECT_EQ(Ask(bus, APPLICATION_USER), Grants(both));
    EXPECT_EQ(Ask(bus, MIDDLEWARE_USER), Grants({}));
}

// Shows on a developer's bus that the tests above can fail.
TEST_P(PolicyOfNames, AStrangerOwnsAllWhereEverythingIsAllowed) {
    const PolicyBus bus(GetParam().daemon, PolicyBus::OPEN_RULES, "");
    EXPECT_EQ(Ask(bus, STRANGER), Grants(AllNames()));
}

// ----
// Which users' signals arrive where. The bus does not report whether it delivered a signal, so each
// receiver prints at the end what it received.

/// Three listeners on the channel, and the signals that each received.
struct Audience {
    explicit Audience(const PolicyBus& bus)
        : application(bus, APPLICATION_USER, COMMANDS),
          middleware(bus, MIDDLEWARE_USER, COMMANDS),
          stranger(bus, STRANGER, COMMANDS) {
        for (Actor* actor : {&application, &middleware, &stranger}) {
            actor->AwaitReceiving();
        }
    }
    static inline const Lines COMMANDS{
        "listen", "type='signal',path='/org/vantu/javamw/CommunicationChannel/Applist'", "receive"};

    Actor application;
    Actor middleware;
    Actor stranger;
};

/// Emits three signals as user to each listener and to all: the channel's signal, another signal,
/// and the channel's signal on another interface. Returns the emitter's name.
std::string EmitAll(const PolicyBus& bus, const User& user, const Audience& audience) {
    Lines commands;
    for (const std::string& to :
         {audience.application.UniqueName(), audience.middleware.UniqueName(),
          audience.stranger.UniqueName(), std::string("-")}) {
        commands.insert(commands.end(), {"signal", to, PATH, INTERFACE, "SendSignal"});
        commands.insert(commands.end(), {"signal", to, PATH, INTERFACE, "Other"});
        commands.insert(commands.end(), {"signal", to, PATH, "org.vantu.Other", "SendSignal"});
    }
    Actor emitter(bus, user, commands);
    EXPECT_EQ(emitter.Lines().size(), 12U);
    return emitter.UniqueName();
}

/// The signals that a receiver got, with the names of the senders.
Lines Arrived(Actor& receiver, const std::vector<std::pair<std::string, std::string>>& senders) {
    receiver.End();
    Lines lines = receiver.Lines(senders);
    EXPECT_EQ(lines.back(), "receive: ended");
    std::erase_if(lines, [](const std::string& line) { return line.rfind("signal ", 0) != 0; });
    return lines;
}

std::string SendSignalFrom(const std::string& sender) {
    return "signal " + sender + " " + PATH + " " + INTERFACE + " SendSignal";
}

class PolicyOfSignals : public PolicyTest {};
INSTANTIATE_TEST_SUITE_P(On, PolicyOfSignals, testing::ValuesIn(AllPlaces()), NameOfPlace);

TEST_P(PolicyOfSignals, PassBetweenApplicationAndMiddlewareOnly) {
    const auto bus = MakeBus();
    Audience audience(*bus);
    std::vector<std::pair<std::string, std::string>> senders;
    for (const User* user : {&STRANGER, &ROOT, &APPLICATION_USER, &MIDDLEWARE_USER}) {
        senders.emplace_back(EmitAll(*bus, *user, audience), user->name);
    }
    // One directed signal and one broadcast.
    const Lines expected{
        SendSignalFrom(APPLICATION_USER.name), SendSignalFrom(APPLICATION_USER.name),
        SendSignalFrom(MIDDLEWARE_USER.name), SendSignalFrom(MIDDLEWARE_USER.name)};
    EXPECT_EQ(Arrived(audience.application, senders), expected);
    EXPECT_EQ(Arrived(audience.middleware, senders), expected);
    EXPECT_EQ(Arrived(audience.stranger, senders), Lines{});
}

TEST_P(PolicyOfSignals, OfAStrangerArriveWhereEverythingIsAllowed) {
    const PolicyBus bus(GetParam().daemon, PolicyBus::OPEN_RULES, "");
    Audience audience(bus);
    const std::string stranger = EmitAll(bus, STRANGER, audience);
    EXPECT_EQ(Arrived(audience.application, {{stranger, "stranger"}}).size(), 6U);
    EXPECT_EQ(Arrived(audience.stranger, {{stranger, "stranger"}}).size(), 6U);
}

// The bus' own ways to eavesdrop.
TEST_P(PolicyOfSignals, KeepsOtherUsersFromEavesdropping) {
    const auto bus = MakeBus();
    for (const User* user : {&STRANGER, &MIDDLEWARE_USER}) {
        const Lines lines =
            Actor(*bus, *user, {"listen", "eavesdrop='true',path='" + PATH + "'"}).Lines();
        ASSERT_EQ(lines.size(), 1U);
        EXPECT_THAT(lines[0], testing::AnyOf(testing::EndsWith("Error.AccessDenied"),
                                             testing::EndsWith("Error.MatchRuleInvalid")));
    }
}

}  // namespace
}  // namespace applist::test
