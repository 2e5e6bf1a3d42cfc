// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "link/Handshake.h"

namespace applist::sim {
namespace {

const std::string APPLICATION = ":1.5";
const HandshakeStep NOTHING;

HandshakeStep AnswerSyn(bool lost = false) {
    return {.lost = lost, .establish = true, .answer = Announcement::SynAck, .connected = false};
}

HandshakeStep AnswerSynAck(bool establish) {
    return {.lost = false, .establish = establish, .answer = Announcement::Ack, .connected = true};
}

const HandshakeStep CONNECT{
    .lost = false, .establish = false, .answer = std::nullopt, .connected = true};
const HandshakeStep LOSE{
    .lost = true, .establish = false, .answer = std::nullopt, .connected = false};

TEST(Handshake, ConnectsAnApplicationThatStartsLater) {
    Handshake handshake;
    EXPECT_EQ(handshake.Heard(Announcement::Syn, APPLICATION), AnswerSyn());
    EXPECT_FALSE(handshake.IsConnected(APPLICATION));
    EXPECT_EQ(handshake.Heard(Announcement::Ack, APPLICATION), CONNECT);
    EXPECT_TRUE(handshake.IsConnected(APPLICATION));
}

TEST(Handshake, ConnectsAnApplicationThatRunsAlready) {
    Handshake handshake;
    EXPECT_EQ(handshake.Heard(Announcement::SynAck, APPLICATION), AnswerSynAck(true));
    EXPECT_TRUE(handshake.IsConnected(APPLICATION));
}

TEST(Handshake, ConnectsOnceWhenBothStartTogether) {
    Handshake handshake;
    EXPECT_EQ(handshake.Heard(Announcement::Syn, APPLICATION), AnswerSyn());
    EXPECT_EQ(handshake.Heard(Announcement::SynAck, APPLICATION), AnswerSynAck(false));
    EXPECT_EQ(handshake.Heard(Announcement::Ack, APPLICATION), NOTHING);
    EXPECT_TRUE(handshake.IsConnected(APPLICATION));
}

TEST(Handshake, IgnoresTheAckOfAnUnknownApplication) {
    Handshake handshake;
    EXPECT_EQ(handshake.Heard(Announcement::Ack, APPLICATION), NOTHING);
    EXPECT_FALSE(handshake.IsConnected(APPLICATION));
}

TEST(Handshake, LeavesAnswersToAnotherMiddlewareAlone) {
    Handshake handshake;
    handshake.Heard(Announcement::SynAck, APPLICATION);
    EXPECT_EQ(handshake.Heard(Announcement::SynAck, APPLICATION), NOTHING);
    EXPECT_EQ(handshake.Heard(Announcement::Ack, APPLICATION), NOTHING);
}

TEST(Handshake, AcknowledgesAnApplicationAfterAnAckThatMayBelongToAnother) {
    Handshake handshake;
    handshake.Heard(Announcement::Syn, APPLICATION);
    EXPECT_EQ(handshake.Heard(Announcement::Ack, APPLICATION), CONNECT);
    const HandshakeStep acknowledge{
        .lost = false, .establish = false, .answer = Announcement::Ack, .connected = false};
    EXPECT_EQ(handshake.Heard(Announcement::SynAck, APPLICATION), acknowledge);
    EXPECT_EQ(handshake.Heard(Announcement::SynAck, APPLICATION), NOTHING);
}

TEST(Handshake, StartsAgainWhenAnApplicationRestartsOnTheSameConnection) {
    Handshake handshake;
    handshake.Heard(Announcement::SynAck, APPLICATION);
    EXPECT_EQ(handshake.Heard(Announcement::Syn, APPLICATION), AnswerSyn(true));
    EXPECT_FALSE(handshake.IsConnected(APPLICATION));
    EXPECT_EQ(handshake.Heard(Announcement::Ack, APPLICATION), CONNECT);
}

TEST(Handshake, LosesAConnectedApplication) {
    Handshake handshake;
    handshake.Heard(Announcement::SynAck, APPLICATION);
    EXPECT_EQ(handshake.Lost(APPLICATION), LOSE);
    EXPECT_FALSE(handshake.IsConnected(APPLICATION));
    EXPECT_EQ(handshake.Heard(Announcement::Ack, APPLICATION), NOTHING);
}

TEST(Handshake, DoesNotReportTheEndOfAnApplicationThatWasNotConnected) {
    Handshake handshake;
    EXPECT_EQ(handshake.Lost(APPLICATION), NOTHING);
    handshake.Heard(Announcement::Syn, APPLICATION);
    EXPECT_EQ(handshake.Lost(APPLICATION), NOTHING);
}

TEST(Handshake, KeepsApplicationsApart) {
    Handshake handshake;
    handshake.Heard(Announcement::Syn, APPLICATION);
    EXPECT_EQ(handshake.Heard(Announcement::SynAck, ":1.6"), AnswerSynAck(true));
    EXPECT_EQ(handshake.Lost(":1.6"), LOSE);
    EXPECT_EQ(handshake.Heard(Announcement::Ack, APPLICATION), CONNECT);
}

}  // namespace
}  // namespace applist::sim
