// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Which users' signals arrive where. The bus does not report whether it delivered a signal, so each
// receiver prints at the end what it received.
#include "bus/policy/PolicyTest.h"

namespace applist::test {
namespace {

using Lines = std::vector<std::string>;

const std::string PATH = CHANNEL_PATH;
const std::string INTERFACE = CHANNEL_INTERFACE;

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
