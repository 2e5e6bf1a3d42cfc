// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// What the destructor of a channel releases, and what it does not release.
#include <csignal>
#include <memory>

#include <gmock/gmock.h>

#include "ChannelTest.h"

namespace applist::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const LogLine NOT_VALID = Error("Empty user_data or connection not valid.\n\n");

class EndOfAChannel : public ChannelTest {};

TEST_F(EndOfAChannel, IsSilent) {
    auto channel = std::make_unique<RecordingChannel>();
    ScriptedPeer peer(Address());
    Connect(peer);
    ClearLog();
    channel.reset();
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(EndOfAChannel, LeavesSubscriptionsWithoutEffect) {
    auto channel = std::make_unique<RecordingChannel>();
    channel.reset();
    ClearLog();
    ScriptedPeer peer(Address());
    for (const char* name : {"_CLIENT_SYN", "_CLIENT_SYN_ACK", "_CLIENT_ACK"}) {
        peer.Announce(name);
    }
    Settle(peer);
    const LogLine syn = Debug("cb_SynNameOwnerChanged called\n");
    const LogLine synAck = Debug("cb_SynAckNameOwnerChanged called\n");
    const LogLine ack = Debug("cb_AckNameOwnerChanged called\n");
    EXPECT_THAT(Log(), ElementsAre(syn, NOT_VALID, syn, NOT_VALID, synAck, NOT_VALID, synAck,
                                   NOT_VALID, ack, NOT_VALID, ack, NOT_VALID));
}

TEST_F(EndOfAChannel, LeavesAnObjectThatDoesNotAnswer) {
    auto channel = std::make_unique<RecordingChannel>();
    channel.reset();
    ClearLog();
    ScriptedPeer peer(Address());
    peer.Send(Self(), PATH, BytesFrom("late"));
    Settle(peer);
    EXPECT_THAT(Log(), ElementsAre(testing::_, NOT_VALID));
    EXPECT_THAT(peer.Traffic(), IsEmpty());
}

TEST_F(EndOfAChannel, DoesNotAffectAnotherChannel) {
    ExpectChannels(2);
    RecordingChannel stays("Stays");
    ScriptedPeer partner(Address(), "Stays");
    { const RecordingChannel ends; }
    Connect(partner);
    EXPECT_TRUE(stays.IsConnectionReady(partner.UniqueName()));
}

// SIGTERM ends a program without a handler. On the platform it ends the main loop.
TEST(EndOfTheBus, SendsTheProgramSigterm) {
    PrivateBus bus;
    ChildProcess program({FAREWELL}, bus.Environment());
    {
        ScriptedPeer peer(bus.Address());
        ASSERT_TRUE(peer.AwaitAnnouncement("_SERVICE_SYN")) << program.Errors();
    }
    bus.Stop();
    EXPECT_EQ(program.WaitForExit(), 128 + SIGTERM) << program.Errors();
}

}  // namespace
}  // namespace applist::test
