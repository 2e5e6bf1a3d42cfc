// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "link/Handshake.h"

namespace applist::sim {
namespace {

/// Events of the application :1.5, or of :1.6 if they end with a 6, and the steps that follow from
/// them: "lost", "establish", the announced answer and "connected", or "nothing".
struct Events {
    const char* name;
    std::string events;
    std::string steps;
};

void PrintTo(const Events& row, std::ostream* out) {
    *out << row.events;
}

HandshakeStep Play(Handshake& handshake, std::string event) {
    const std::string application = event.back() == '6' ? ":1.6" : ":1.5";
    event.erase(event.find_last_not_of('6') + 1);
    for (const Announcement announcement : ANNOUNCEMENTS) {
        if (NameOf(announcement) == event) {
            return handshake.Heard(announcement, application);
        }
    }
    EXPECT_EQ(event, "lost");
    return handshake.Lost(application);
}

std::string TextOf(const HandshakeStep& step) {
    std::string text = step.lost ? " lost" : "";
    text += step.establish ? " establish" : "";
    text += step.answer ? " " + std::string(NameOf(*step.answer)) : "";
    text += step.connected ? " connected" : "";
    return text.empty() ? "nothing" : text.substr(1);
}

class AHandshake : public testing::TestWithParam<Events> {};

TEST_P(AHandshake, HasTheseSteps) {
    Handshake handshake;
    std::istringstream events(GetParam().events);
    std::string steps;
    bool connected = false;
    for (std::string event; events >> event;) {
        const HandshakeStep step = Play(handshake, event);
        steps += (steps.empty() ? "" : ", ") + TextOf(step);
        if (event.back() != '6') {
            connected = (connected && !step.lost) || step.connected;
            EXPECT_EQ(handshake.IsConnected(":1.5"), connected) << steps;
        }
    }
    EXPECT_EQ(steps, GetParam().steps);
}

INSTANTIATE_TEST_SUITE_P(
    Middleware, AHandshake,
    testing::Values(
        Events{"ConnectsAnApplicationThatStartsLater", "syn ack", "establish syn-ack, connected"},
        Events{"ConnectsAnApplicationThatRunsAlready", "syn-ack", "establish ack connected"},
        Events{"ConnectsOnceIfBothStartTogether", "syn syn-ack ack",
               "establish syn-ack, ack connected, nothing"},
        Events{"IgnoresTheAckOfAnUnknownApplication", "ack", "nothing"},
        Events{"IgnoresAnswersToAnotherMiddleware", "syn-ack syn-ack ack",
               "establish ack connected, nothing, nothing"},
        Events{"AcknowledgesAfterAnAckThatMayBelongToAnother", "syn ack syn-ack syn-ack",
               "establish syn-ack, connected, ack, nothing"},
        Events{"StartsAgainIfAnApplicationRestartsOnItsConnection", "syn-ack syn ack",
               "establish ack connected, lost establish syn-ack, connected"},
        Events{"LosesAConnectedApplication", "syn-ack lost ack",
               "establish ack connected, lost, nothing"},
        Events{"DoesNotReportTheEndOfAnUnconnectedApplication", "lost syn lost",
               "nothing, establish syn-ack, nothing"},
        Events{"KeepsApplicationsApart", "syn syn-ack6 lost6 ack",
               "establish syn-ack, establish ack connected, lost, connected"}),
    [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace applist::sim
