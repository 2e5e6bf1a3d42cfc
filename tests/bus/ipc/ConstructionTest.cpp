// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Construction and announcements with a bus, without one, and with a bus that denies requests.
#include <cstdlib>

#include <gmock/gmock.h>

#include "ChannelTest.h"

namespace applist::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

const LogLine NOT_ANSWERED = Error("Cannot get response for name request\n\n");

class Channel : public ChannelTest {};

TEST_F(Channel, AnnouncesItselfOnConstruction) {
    ScriptedPeer peer(Address());
    const RecordingChannel channel;
    EXPECT_EQ(Log(), Join({ConstructionLog(Self()), BroadcastLog("_SERVICE_SYN", Self())}));
    Settle(peer);
    EXPECT_THAT(peer.Events(),
                ElementsAre(PeerEvent{PeerEvent::ANNOUNCEMENT, "_SERVICE_SYN", Self(), {}}));
}

TEST_F(Channel, DeclaresItsMethodAndNothingElse) {
    ExpectChannels(0);
    EXPECT_STREQ(JavaMWDbusLocal::INTERFACE_XML,
                 "<node>  <interface name='org.vantu.javamw.DbusCommunication'>    <method "
                 "name='Send'>      <arg type='ay' name='data' direction='in'/>      <arg "
                 "type='ay' name='response' direction='out'/>    </method>  </interface></node>");
    EXPECT_EQ(JavaMWDbusLocal::m_vtable.method_call, JavaMWDbusLocal::cb_MethodCall);
    EXPECT_EQ(JavaMWDbusLocal::m_vtable.get_property, nullptr);
    EXPECT_EQ(JavaMWDbusLocal::m_vtable.set_property, nullptr);
}

TEST_F(Channel, AbandonsAnAnnouncementWhoseNameHasAnOwner) {
    ScriptedPeer other(Address());
    other.Own("_SERVICE_SYN");
    const RecordingChannel channel;
    EXPECT_EQ(Log().back(), Error("Cannot own name due to return code = 3\n\n"));
    other.Release("_SERVICE_SYN");
    Settle(other);
    EXPECT_THAT(
        other.Events(),
        ElementsAre(PeerEvent{PeerEvent::ANNOUNCEMENT, "_SERVICE_SYN", other.UniqueName(), {}}));
}

TEST_F(Channel, AnnouncesAnyName) {
    ScriptedPeer peer(Address());
    RecordingChannel channel;
    ClearLog();
    std::string name = "org.vantu.JavaMW.Applist_SERVICE_ACK";
    channel.BroadcastName(name);
    EXPECT_EQ(Log(), BroadcastLog("_SERVICE_ACK", Self()));
    EXPECT_TRUE(peer.AwaitAnnouncement("_SERVICE_ACK"));
}

TEST_F(Channel, ContinuesWhenItsObjectIsRefused) {
    g_autoptr(GDBusNodeInfo) node =
        g_dbus_node_info_new_for_xml(JavaMWDbusLocal::INTERFACE_XML, nullptr);
    const GDBusInterfaceVTable silent = {};
    const guint taken = g_dbus_connection_register_object(Connection(), PATH, node->interfaces[0],
                                                          &silent, nullptr, nullptr, nullptr);
    RecordingChannel channel;
    EXPECT_EQ(Log()[5], Error("Error while registering object [2] An object is already exported "
                              "for the interface org.vantu.javamw.DbusCommunication at "
                              "/org/vantu/javamw/CommunicationChannel/Applist\n\n"));
    g_dbus_connection_unregister_object(Connection(), taken);

    ScriptedPeer peer(Address());
    Connect(peer);
    EXPECT_TRUE(channel.IsConnectionReady(peer.UniqueName()));
    channel.Notify("e");
    peer.Send(Self(), PATH, {});
    ASSERT_TRUE(peer.AwaitTraffic(2));
    EXPECT_THAT(
        peer.Traffic(),
        ElementsAre(
            PeerEvent{PeerEvent::SIGNAL, std::string("SendSignal ") + PATH, Self(), BytesFrom("e")},
            PeerEvent{PeerEvent::FAILURE, "org.freedesktop.DBus.Error.UnknownMethod", "", {}}));
    EXPECT_THAT(channel.messages, IsEmpty());
}

TEST_F(Channel, ConnectsAMiddlewareThatStartedFirst) {
    ScriptedPeer peer(Address());
    const RecordingChannel channel;
    ASSERT_TRUE(peer.AwaitAnnouncement("_SERVICE_SYN"));
    ClearLog();
    peer.Announce("_CLIENT_SYN_ACK");
    Settle(peer);
    EXPECT_EQ(Log(), Join({AnnouncementLog("SynAck", "_CLIENT_SYN_ACK", Self(), peer.UniqueName()),
                           EstablishLog(peer.UniqueName()), BroadcastLog("_SERVICE_ACK", Self())}));
    EXPECT_THAT(peer.Events(),
                ElementsAre(PeerEvent{PeerEvent::ANNOUNCEMENT, "_SERVICE_SYN", Self(), {}},
                            PeerEvent{PeerEvent::ANNOUNCEMENT, "_SERVICE_ACK", Self(), {}}));
    EXPECT_THAT(channel.readiness, ElementsAre(std::pair(true, peer.UniqueName())));
}

// "App-list" is valid in a bus name but not in an object path, so GLib refuses the subscription.
TEST_F(Channel, ConnectsAPartnerThatCannotBeNotifiedWhenTheSubscriptionFails) {
    RecordingChannel channel("App-list");
    ScriptedPeer peer(Address(), "App-list");
    peer.Announce("_CLIENT_SYN_ACK");
    Settle(peer);
    EXPECT_THAT(channel.readiness, ElementsAre(std::pair(true, peer.UniqueName())));
    EXPECT_TRUE(channel.IsConnectionReady(peer.UniqueName()));
    ClearLog();
    channel.Notify("", peer.UniqueName());
    EXPECT_THAT(Log(), ElementsAre(Error("SignalSubscription not ready\n\n")));
    // The watch alone makes the partner known. An ACK is accepted only with watch and subscription.
    for (const char* name : {"_CLIENT_SYN", "_CLIENT_SYN_ACK", "_CLIENT_ACK"}) {
        peer.Announce(name);
        Settle(peer);
        EXPECT_EQ(Log().back(), Debug("Owner " + peer.UniqueName() + " already exists\n")) << name;
    }
    EXPECT_THAT(channel.readiness, testing::SizeIs(1));
    // For registering the object, the proxy and the subscription.
    ExpectGlibMessages(3, "g_variant_is_object_path (object_path)");
}

class BusThatRefusesNames : public ChannelTest {
protected:
    BusThatRefusesNames() : ChannelTest("<deny own='org.vantu.JavaMW.Applist_SERVICE_SYN'/>") {}
};

TEST_F(BusThatRefusesNames, LeavesTheChannelUnannounced) {
    ScriptedPeer peer(Address());
    const RecordingChannel channel;
    ASSERT_EQ(Log().size(), 10U);
    EXPECT_EQ(Log()[8].priority, 6);
    EXPECT_THAT(Log()[8].message,
                StartsWith("Error during request name call [9] "
                           "GDBus.Error:org.freedesktop.DBus.Error.AccessDenied: "));
    EXPECT_EQ(Log()[9], NOT_ANSWERED);
    Settle(peer);
    EXPECT_THAT(peer.Events(), IsEmpty());
}

TEST_F(BusThatRefusesNames, DoesNotPreventAPartnerFromConnecting) {
    ScriptedPeer peer(Address());
    RecordingChannel channel;
    Connect(peer);
    EXPECT_TRUE(channel.IsConnectionReady(peer.UniqueName()));
}

class BusThatKeepsNames : public ChannelTest {
protected:
    BusThatKeepsNames()
        : ChannelTest(
              "<deny send_destination='org.freedesktop.DBus' "
              "send_interface='org.freedesktop.DBus' send_member='ReleaseName'/>") {}
};

TEST_F(BusThatKeepsNames, IsReportedWithTheReleaseThatFailed) {
    const RecordingChannel channel;
    EXPECT_EQ(Log(), Join({ConstructionLog(Self()),
                           BroadcastLog("_SERVICE_SYN", Self()),
                           {Error("Release failed due to empty response.\n\n")}}));
}

/// A process without a system bus.
class ChannelWithoutBus : public testing::Test {
protected:
    void SetUp() override {
        RecordGlibMessages();
        ClearLog();
        setenv(PrivateBus::ADDRESS_VARIABLE, "unix:path=/nonexistent/bus", 1);
    }
    void TearDown() override { EXPECT_THAT(GlibMessages(), IsEmpty()); }
};

TEST_F(ChannelWithoutBus, IsConstructedAndLogsTheReason) {
    const RecordingChannel channel;
    EXPECT_THAT(Log(), ElementsAre(Debug("Constructor\n\n"), Debug("XML parsed\n\n"),
                                   Debug("Getting connection to SYSTEM_BUS\n\n"),
                                   Error("Error while connecting to system bus [1] Could not "
                                         "connect: No such file or directory\n\n")));
}

TEST_F(ChannelWithoutBus, ReachesNoPartner) {
    RecordingChannel channel;
    ClearLog();
    Bytes data = BytesFrom("x");
    std::string name = "org.vantu.JavaMW.Applist_SERVICE_SYN";
    channel.SendNotification(data);
    channel.SendNotification(data, ":1.1");
    channel.BroadcastName(name);
    EXPECT_FALSE(channel.IsConnectionReady(":1.1"));
    EXPECT_THAT(
        Log(),
        ElementsAre(Debug("Number of partners to iterate is: 0\n\n"),
                    Error("Communication partner :1.1 not found in m_partner map.\n\n"),
                    Debug("BroadcastName org.vantu.JavaMW.Applist_SERVICE_SYN Public unique name "
                          "\n\n"),
                    NOT_ANSWERED));
}

}  // namespace
}  // namespace applist::test
