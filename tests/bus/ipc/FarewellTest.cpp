// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// A notification that is sent right before the channel is destroyed must arrive: it carries the
// viewer's choice.
#include <memory>

#include <gmock/gmock.h>

#include "ChannelTest.h"

namespace applist::test {
namespace {

using testing::IsEmpty;

class Farewell : public ChannelTest {
protected:
    Farewell() { ExpectChannels(0); }
};

void Forget(GDBusConnection*, const char*, void* gone) {
    *static_cast<bool*>(gone) = true;
}

/// Runs the main context until the bus reports that name has lost its owner. By then every message
/// of the owner has arrived. Returns false on a timeout.
bool AwaitLoss(GDBusConnection* connection, const std::string& name) {
    bool gone = false;
    const unsigned watch = g_bus_watch_name_on_connection(
        connection, name.c_str(), G_BUS_NAME_WATCHER_FLAGS_NONE, nullptr, Forget, &gone, nullptr);
    const bool inTime = RunUntil([&gone] { return gone; });
    g_bus_unwatch_name(watch);
    return inTime;
}

// Whether a notification gets lost depends on timing, so the test repeats this 200 times.
TEST_F(Farewell, ArrivesEachTimeFromAProgramThatEndsAtOnce) {
    constexpr size_t TIMES = 200;
    ScriptedPeer peer(Address());
    size_t arrived = 0;
    for (size_t time = 0; time < TIMES; ++time) {
        ChildProcess program({FAREWELL}, {{PrivateBus::ADDRESS_VARIABLE, Address()}});
        ASSERT_TRUE(peer.AwaitAnnouncement("_SERVICE_SYN"));
        const std::string name = peer.Events().back().sender;
        peer.Announce("_CLIENT_SYN_ACK");
        ASSERT_EQ(program.WaitForExit(), 0) << program.Errors();
        ASSERT_TRUE(AwaitLoss(peer.Connection(), name));
        const auto traffic = peer.Traffic();
        arrived += !traffic.empty() && traffic.back().sender == name ? 1U : 0U;
    }
    EXPECT_EQ(arrived, TIMES);
    EXPECT_EQ(peer.Traffic().size(), TIMES);
}

class EndWithoutAListener : public ChannelTest {
protected:
    /// More than the bus reads from a connection at once, so that a part stays queued in the
    /// program.
    static Bytes TooMuchAtOnce() { return Bytes(4U << 20U, 'x'); }
};

TEST_F(EndWithoutAListener, DoesNotWaitForABusThatHangs) {
    auto channel = std::make_unique<RecordingChannel>();
    ScriptedPeer peer(Address());
    Connect(peer);
    TheBus().Freeze();
    Bytes event = TooMuchAtOnce();
    channel->SendNotification(event);
    ClearLog();
    channel.reset();  // Blocks forever if it waits for the bus.
    EXPECT_THAT(Log(), testing::ElementsAre(
                           Error("The last messages may be lost: [24] Timeout was reached\n\n")));
    TheBus().Thaw();
    EXPECT_TRUE(peer.AwaitTraffic(1));
}

TEST_F(EndWithoutAListener, IsSilentWhenTheBusIsGone) {
    auto channel = std::make_unique<RecordingChannel>();
    ASSERT_TRUE(g_dbus_connection_close_sync(Connection(), nullptr, nullptr));
    ClearLog();
    channel.reset();
    EXPECT_THAT(Log(), IsEmpty());
}

}  // namespace
}  // namespace applist::test
