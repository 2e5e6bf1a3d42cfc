// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The handshake in each starting order, and with steps out of order.
#include <atomic>
#include <memory>
#include <new>

#include <gmock/gmock.h>

#include "ChannelTest.h"

namespace applist::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Ready = std::pair<bool, std::string>;

class Handshake : public ChannelAndPeer {
protected:
    PeerEvent Announced(const std::string& name) const {
        return {PeerEvent::ANNOUNCEMENT, name, Self(), {}};
    }
    static std::vector<LogLine> AlreadyExists(const ScriptedPeer& peer) {
        return {Debug("Owner " + peer.UniqueName() + " already exists\n")};
    }
};

TEST_F(Handshake, ConnectsAMiddlewareThatStartsLater) {
    peer.Announce("_CLIENT_SYN");
    Settle(peer);
    EXPECT_EQ(Log(),
              Join({AnnouncementLog("Syn", "_CLIENT_SYN", Self(), peer.UniqueName()),
                    EstablishLog(peer.UniqueName()), BroadcastLog("_SERVICE_SYN_ACK", Self())}));
    EXPECT_THAT(channel.readiness, IsEmpty());
    EXPECT_FALSE(channel.IsConnectionReady(peer.UniqueName()));
    ClearLog();
    peer.Announce("_CLIENT_ACK");
    Settle(peer);
    EXPECT_EQ(Log(), AnnouncementLog("Ack", "_CLIENT_ACK", Self(), peer.UniqueName()));
    EXPECT_THAT(peer.Events(), ElementsAre(Announced("_SERVICE_SYN_ACK")));
    EXPECT_THAT(channel.readiness, ElementsAre(Ready{true, peer.UniqueName()}));
    EXPECT_TRUE(channel.IsConnectionReady(peer.UniqueName()));
}

TEST_F(Handshake, LetsTheReadyHookNotifyThePartnerAtOnce) {
    channel.onReady = [this](bool, const std::string& partner) {
        EXPECT_TRUE(channel.IsConnectionReady(partner));
        channel.Notify("hello", partner);
    };
    peer.Announce("_CLIENT_SYN_ACK");
    Settle(peer);
    const PeerEvent hello{PeerEvent::SIGNAL, std::string("SendSignal ") + PATH, Self(),
                          BytesFrom("hello")};
    EXPECT_THAT(peer.Events(), ElementsAre(Announced("_SERVICE_ACK"), hello));
}

TEST_F(Handshake, IgnoresTheAcquisitionHalfOfAnAnnouncement) {
    for (const char* name : {"_CLIENT_SYN", "_CLIENT_SYN_ACK", "_CLIENT_ACK"}) {
        peer.Own(name);
    }
    Settle(peer);
    EXPECT_EQ(Log(), Join({ChangeLog("Syn", "_CLIENT_SYN", Self(), "", peer.UniqueName()),
                           ChangeLog("SynAck", "_CLIENT_SYN_ACK", Self(), "", peer.UniqueName()),
                           ChangeLog("Ack", "_CLIENT_ACK", Self(), "", peer.UniqueName())}));
    ClearLog();
    channel.Notify("");
    EXPECT_THAT(Log(), ElementsAre(Debug("Number of partners to iterate is: 0\n\n")));
    EXPECT_THAT(channel.readiness, IsEmpty());
}

TEST_F(Handshake, IgnoresItsOwnReleases) {
    const std::pair<std::string, std::string> handlers[] = {
        {"Syn", "_CLIENT_SYN"}, {"SynAck", "_CLIENT_SYN_ACK"}, {"Ack", "_CLIENT_ACK"}};
    for (const auto& [handler, ending] : handlers) {
        std::string name = "org.vantu.JavaMW.Applist" + ending;
        ClearLog();
        channel.BroadcastName(name);
        Settle(peer);
        EXPECT_EQ(Log(), Join({BroadcastLog(ending, Self()),
                               AnnouncementLog(handler, ending, Self(), Self())}));
    }
    ClearLog();
    channel.Notify("");
    EXPECT_THAT(Log(), ElementsAre(Debug("Number of partners to iterate is: 0\n\n")));
    EXPECT_THAT(channel.readiness, IsEmpty());
}

TEST_F(Handshake, RefusesASecondSyn) {
    peer.Announce("_CLIENT_SYN");
    Settle(peer);
    ClearLog();
    peer.Announce("_CLIENT_SYN");
    Settle(peer);
    EXPECT_EQ(Log(), Join({AnnouncementLog("Syn", "_CLIENT_SYN", Self(), peer.UniqueName()),
                           AlreadyExists(peer)}));
    EXPECT_THAT(peer.Events(), ElementsAre(Announced("_SERVICE_SYN_ACK")));
    EXPECT_FALSE(channel.IsConnectionReady(peer.UniqueName()));
}

TEST_F(Handshake, RefusesASecondSynAck) {
    peer.Announce("_CLIENT_SYN_ACK");
    Settle(peer);
    ClearLog();
    peer.Announce("_CLIENT_SYN_ACK");
    Settle(peer);
    EXPECT_EQ(Log(), Join({AnnouncementLog("SynAck", "_CLIENT_SYN_ACK", Self(), peer.UniqueName()),
                           AlreadyExists(peer)}));
    EXPECT_THAT(peer.Events(), ElementsAre(Announced("_SERVICE_ACK")));
    EXPECT_THAT(channel.readiness, ElementsAre(Ready{true, peer.UniqueName()}));
}

TEST_F(Handshake, KeepsAnEmptyRecordOfAnUnknownPartnerThatAcknowledges) {
    ScriptedPeer stranger(Address());
    ClearLog();
    stranger.Announce("_CLIENT_ACK");
    Settle(stranger);
    EXPECT_EQ(Log(), Join({AnnouncementLog("Ack", "_CLIENT_ACK", Self(), stranger.UniqueName()),
                           AlreadyExists(stranger)}));
    EXPECT_THAT(channel.readiness, IsEmpty());
    EXPECT_THAT(stranger.Events(), IsEmpty());
    ClearLog();
    channel.Notify("", stranger.UniqueName());
    EXPECT_THAT(Log(), ElementsAre(Error("Connection not set.\n\n")));
}

TEST_F(Handshake, ContinuesAfterAReadyHookThatRanOutOfMemory) {
    channel.onReady = [](bool, const std::string&) { throw std::bad_alloc(); };
    Connect(peer);
    EXPECT_EQ(Log().back(), Error("Callback aborted: std::bad_alloc"));
    // Hangs if the exception has left the mutex locked.
    peer.Announce("_CLIENT_ACK");
    Settle(peer);
    EXPECT_THAT(channel.readiness, testing::SizeIs(2));
}

TEST_F(Handshake, ServesTwoPartnersInTheOrderOfTheirUniqueNames) {
    // The names end in ".9" and ".10": compared as text, the later one comes first.
    auto ninth = std::make_unique<ScriptedPeer>(Address());
    while (!ninth->UniqueName().ends_with(".9")) {
        ninth = std::make_unique<ScriptedPeer>(Address());
    }
    ScriptedPeer tenth(Address());
    ASSERT_LT(tenth.UniqueName(), ninth->UniqueName());
    Connect(*ninth);
    Connect(tenth);
    ClearLog();
    channel.Notify("event");
    EXPECT_THAT(
        Log(),
        ElementsAre(Debug("Number of partners to iterate is: 2\n\n"),
                    Debug("Sending notification for partner: " + tenth.UniqueName() + "\n\n"),
                    Debug("Sending signal with 5 bytes\n\n"),
                    Debug("Sending notification for partner: " + ninth->UniqueName() + "\n\n"),
                    Debug("Sending signal with 5 bytes\n\n")));
    const PeerEvent signal{PeerEvent::SIGNAL, std::string("SendSignal ") + PATH, Self(),
                           BytesFrom("event")};
    Settle(*ninth);
    Settle(tenth);
    EXPECT_THAT(ninth->Traffic(), ElementsAre(signal));
    EXPECT_THAT(tenth.Traffic(), ElementsAre(signal));
}

TEST_F(Handshake, IgnoresOtherChannels) {
    ScriptedPeer other(Address(), "Other");
    other.Announce("_CLIENT_SYN");
    Settle(other);
    EXPECT_THAT(Log(), IsEmpty());
}

// A signal sent to the application directly arrives without a match rule, so the application must
// check the sender.
TEST_F(Handshake, IgnoresANameChangeThatTheBusDaemonDidNotSend) {
    ScriptedPeer forger(Address());
    const ScriptedPeer victim(Address());
    ClearLog();
    for (const char* ending : {"_CLIENT_SYN", "_CLIENT_SYN_ACK", "_CLIENT_ACK"}) {
        const std::string name = std::string("org.vantu.JavaMW.Applist") + ending;
        EXPECT_TRUE(g_dbus_connection_emit_signal(
            forger.Connection(), Self().c_str(), "/org/freedesktop/DBus", "org.freedesktop.DBus",
            "NameOwnerChanged",
            g_variant_new("(sss)", name.c_str(), victim.UniqueName().c_str(), ""), nullptr));
    }
    Settle(forger);
    EXPECT_THAT(Log(), IsEmpty());
    EXPECT_THAT(forger.Events(), IsEmpty());
    EXPECT_THAT(channel.readiness, IsEmpty());
    EXPECT_FALSE(channel.IsConnectionReady(victim.UniqueName()));
}

/// Counts the method calls that reach a connection, in the bus library's own thread.
GDBusMessage* CountCalls(GDBusConnection* /*connection*/, GDBusMessage* message, int incoming,
                         void* count) {
    if (incoming != FALSE &&
        g_dbus_message_get_message_type(message) == G_DBUS_MESSAGE_TYPE_METHOD_CALL) {
        ++*static_cast<std::atomic<int>*>(count);
    }
    return message;
}

TEST_F(Handshake, NeverCallsThePartner) {
    std::atomic<int> calls = 0;
    const guint filter =
        g_dbus_connection_add_filter(peer.Connection(), CountCalls, &calls, nullptr);
    Connect(peer);
    EXPECT_EQ(CallFrom(peer, BytesFrom("question")), BytesFrom("question"));
    channel.Notify("event", peer.UniqueName());
    Settle(peer);
    g_dbus_connection_remove_filter(peer.Connection(), filter);
    EXPECT_EQ(calls, 0);
}

TEST_F(Handshake, IgnoresAChangeWithoutItsThreeNames) {
    g_autoptr(GVariant) wrong = g_variant_ref_sink(g_variant_new("(s)", ":1.5"));
    JavaMWDbusLocal::cb_SynNameOwnerChanged(Connection(), "", "", "", "", wrong, &channel);
    EXPECT_THAT(Log(), ElementsAre(Debug("cb_SynNameOwnerChanged called\n"),
                                   Error("cb_SynNameOwnerChanged without a name and its owners is "
                                         "ignored.\n\n")));
}

}  // namespace
}  // namespace applist::test
