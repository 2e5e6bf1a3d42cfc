// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The loss of a partner and of the bus.
#include <memory>

#include <gmock/gmock.h>

#include "ChannelTest.h"

namespace applist::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Ready = std::pair<bool, std::string>;

std::vector<LogLine> LossLog(const std::string& name) {
    return {Debug("cb_PartnerNameVanished name=" + name + "\n\n"),
            Debug("Connection lost with partner id=" + name + "\n\n"),
            Debug("Stop watching old partner messages.\n\n"),
            Debug("Removed " + name + " connection owner from m_partner\n")};
}

LogLine NotFound(const std::string& name) {
    return Error("Communication partner " + name + " not found in m_partner map.\n\n");
}

const LogLine NOT_SET = Error("Connection not set.\n\n");
const LogLine NOT_VALID = Error("Empty user_data or connection not valid.\n\n");

class Partner : public ChannelAndPeer {
protected:
    void ConnectAndLose() {
        Connect(peer);
        ClearLog();
        peer.Leave();
        EXPECT_TRUE(RunUntil([&] { return channel.readiness.back() == Ready{false, name}; }));
    }

    const std::string name = peer.UniqueName();
};

TEST_F(Partner, IsForgottenWhenItLeaves) {
    ConnectAndLose();
    EXPECT_EQ(Log(), LossLog(name));
    EXPECT_THAT(channel.readiness, ElementsAre(Ready{true, name}, Ready{false, name}));
    ClearLog();
    channel.Notify("", name);
    EXPECT_THAT(Log(), ElementsAre(NotFound(name)));
}

TEST_F(Partner, IsNotConnectedWhenALookupCreatedItsRecordAgain) {
    ConnectAndLose();
    EXPECT_FALSE(channel.IsConnectionReady(name));
    ClearLog();
    channel.Notify("", name);
    EXPECT_THAT(Log(), ElementsAre(NOT_SET));
}

TEST_F(Partner, IsForgottenWhenLostDuringTheHandshake) {
    peer.Announce("_CLIENT_SYN");
    Settle(peer);
    ClearLog();
    peer.Leave();
    ASSERT_TRUE(RunUntil([&] { return !channel.readiness.empty(); }));
    EXPECT_EQ(Log(), LossLog(name));
    EXPECT_THAT(channel.readiness, ElementsAre(Ready{false, name}));
}

TEST_F(Partner, HoldsItsResourcesDuringTheLostHook) {
    channel.onReady = [this](bool ready, const std::string& partner) {
        // The record is removed after the hook. Until then the partner counts as connected.
        EXPECT_TRUE(channel.IsConnectionReady(partner)) << ready;
        channel.Notify("e", partner);
        EXPECT_EQ(Log().back(), Debug("Sending signal with 1 bytes\n\n")) << ready;
    };
    // The lost partner's unique name has been cleared, so GLib refuses to send a signal to it.
    ExpectGlibMessages(1, "destination_bus_name");
    ConnectAndLose();
    channel.onReady = [](bool, const std::string&) {};
    EXPECT_FALSE(channel.IsConnectionReady(name));
}

TEST_F(Partner, IsErasedWithoutAHookWhenItsRecordWasEmpty) {
    EXPECT_FALSE(channel.IsConnectionReady(":9.9"));
    ClearLog();
    JavaMWDbusLocal::cb_PartnerNameVanished(Connection(), ":9.9", &channel);
    EXPECT_THAT(Log(), ElementsAre(Debug("cb_PartnerNameVanished name=:9.9\n\n"),
                                   Debug("Removed :9.9 connection owner from m_partner\n")));
    EXPECT_THAT(channel.readiness, IsEmpty());
    ClearLog();
    channel.Notify("", ":9.9");
    EXPECT_THAT(Log(), ElementsAre(NotFound(":9.9")));
}

TEST_F(Partner, IsErasedWithoutAHookWhenUnknown) {
    JavaMWDbusLocal::cb_PartnerNameVanished(Connection(), ":9.9", &channel);
    channel.Notify("");
    EXPECT_THAT(Log(), ElementsAre(Debug("cb_PartnerNameVanished name=:9.9\n\n"),
                                   Debug("Removed :9.9 connection owner from m_partner\n"),
                                   Debug("Number of partners to iterate is: 0\n\n")));
    EXPECT_THAT(channel.readiness, IsEmpty());
}

class Bus : public ChannelAndPeer {
protected:
    /// Closes the application's connection as if the bus had ended.
    void CloseConnection() {
        ASSERT_TRUE(g_dbus_connection_close_sync(Connection(), nullptr, nullptr));
        ASSERT_TRUE(RunUntil([this] { return g_dbus_connection_is_closed(Connection()) != 0; }));
    }
};

TEST_F(Bus, ReportsAVanishedPartnerWithoutAConnectionWhenItIsGone) {
    Connect(peer);
    ClearLog();
    CloseConnection();
    ASSERT_TRUE(RunUntil([] { return !Log().empty(); }));
    EXPECT_THAT(
        Log(),
        ElementsAre(Debug("cb_PartnerNameVanished name=" + peer.UniqueName() + "\n\n"), NOT_VALID));
    EXPECT_THAT(channel.readiness, testing::SizeIs(1));
}

TEST_F(Bus, CarriesNothingWhenItIsGone) {
    Connect(peer);
    CloseConnection();
    ClearLog();
    channel.Notify("x", peer.UniqueName());
    EXPECT_THAT(Log(),
                ElementsAre(Debug("Sending signal with 1 bytes\n\n"),
                            Error("Error while sending signal [18] The connection is closed\n\n")));
    EXPECT_THAT(LogFunctions(), testing::Each("SendNotification"));
}

TEST_F(Bus, DoesNotPreventAHandshakeWhenItIsGone) {
    CloseConnection();
    ClearLog();
    g_autoptr(GVariant) release = g_variant_ref_sink(
        g_variant_new("(sss)", "org.vantu.JavaMW.Applist_CLIENT_SYN_ACK", ":1.77", ""));
    JavaMWDbusLocal::cb_SynAckNameOwnerChanged(Connection(), "", "", "", "", release, &channel);
    EXPECT_EQ(Log(),
              Join({ChangeLog("SynAck", "_CLIENT_SYN_ACK", Self(), ":1.77", ""),
                    EstablishLog(":1.77"),
                    {BroadcastLog("_SERVICE_ACK", Self())[0],
                     Error("Error during request name call [18] The connection is closed\n\n"),
                     Error("Cannot get response for name request\n\n")}}));
    EXPECT_THAT(channel.readiness, ElementsAre(Ready{true, ":1.77"}));
    EXPECT_TRUE(channel.IsConnectionReady(":1.77"));
    ExpectGlibMessages(2, "Error while sending AddMatch() message: The connection is closed");
}

TEST_F(Bus, LeavesNoTraceOfACallbackWithoutConnectionOrObject) {
    const std::vector<std::pair<std::string, std::function<void(GDBusConnection*, void*)>>>
        callbacks{
            {"cb_MethodCall",
             [](GDBusConnection* c, void* o) {
                 JavaMWDbusLocal::cb_MethodCall(c, "s", PATH, "i", "Send", nullptr, nullptr, o);
             }},
            {"cb_SignalCall",
             [](GDBusConnection* c, void* o) {
                 JavaMWDbusLocal::cb_SignalCall(c, "s", PATH, "i", "SendSignal", nullptr, o);
             }},
            {"cb_SynNameOwnerChanged",
             [](GDBusConnection* c, void* o) {
                 JavaMWDbusLocal::cb_SynNameOwnerChanged(c, "s", "p", "i", "n", nullptr, o);
             }},
            {"cb_SynAckNameOwnerChanged",
             [](GDBusConnection* c, void* o) {
                 JavaMWDbusLocal::cb_SynAckNameOwnerChanged(c, "s", "p", "i", "n", nullptr, o);
             }},
            {"cb_AckNameOwnerChanged",
             [](GDBusConnection* c, void* o) {
                 JavaMWDbusLocal::cb_AckNameOwnerChanged(c, "s", "p", "i", "n", nullptr, o);
             }},
            {"cb_PartnerNameVanished", [](GDBusConnection* c, void* o) {
                 JavaMWDbusLocal::cb_PartnerNameVanished(c, ":1.1", o);
             }}};
    for (const auto& [name, callback] : callbacks) {
        ClearLog();
        callback(nullptr, &channel);
        callback(Connection(), nullptr);
        EXPECT_THAT(Log(), ElementsAre(testing::_, NOT_VALID, testing::_, NOT_VALID)) << name;
        // Only the log line shows which callback failed.
        EXPECT_THAT(LogFunctions(), testing::Each(name));
        EXPECT_EQ(Log().back().file, Log().front().file);
    }
    EXPECT_THAT(channel.readiness, IsEmpty());
    EXPECT_THAT(channel.notifications, IsEmpty());
    EXPECT_THAT(channel.messages, IsEmpty());
}

}  // namespace
}  // namespace applist::test
