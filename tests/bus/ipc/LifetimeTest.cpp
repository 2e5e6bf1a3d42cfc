// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// What the destructor of a channel releases, and what it does not release.
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

TEST_F(EndOfAChannel, SendsWhatIsQueuedButDoesNotWaitForABusThatHangs) {
    auto channel = std::make_unique<RecordingChannel>();
    ScriptedPeer peer(Address());
    Connect(peer);
    TheBus().Freeze();
    // More than the bus reads from a connection at once, so that a part stays queued here.
    Bytes event(4U << 20U, 'x');
    channel->SendNotification(event);
    ClearLog();
    channel.reset();  // Blocks forever if it waits for the bus.
    EXPECT_THAT(Log(),
                ElementsAre(Error("The last messages may be lost: [24] Timeout was reached\n\n")));
    TheBus().Thaw();
    EXPECT_TRUE(peer.AwaitTraffic(1));
}

TEST_F(EndOfAChannel, IsSilentWhenTheBusIsGone) {
    auto channel = std::make_unique<RecordingChannel>();
    ASSERT_TRUE(g_dbus_connection_close_sync(Connection(), nullptr, nullptr));
    ClearLog();
    channel.reset();
    EXPECT_THAT(Log(), IsEmpty());
}

}  // namespace
}  // namespace applist::test
