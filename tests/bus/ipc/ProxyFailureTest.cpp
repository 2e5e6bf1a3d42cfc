// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// A partner whose proxy cannot be made. Own program, for it replaces the function that makes it.
#include <memory>

#include <gmock/gmock.h>

#include "ChannelTest.h"

extern "C" GDBusProxy* g_dbus_proxy_new_sync(GDBusConnection* /*connection*/,
                                             GDBusProxyFlags /*flags*/,
                                             GDBusInterfaceInfo* /*info*/, const gchar* /*name*/,
                                             const gchar* /*object_path*/,
                                             const gchar* /*interface_name*/,
                                             GCancellable* /*cancellable*/, GError** error) {
    g_set_error_literal(error, G_IO_ERROR, G_IO_ERROR_FAILED, "no proxy today");
    return nullptr;
}

namespace applist::test {
namespace {

using testing::ElementsAre;
using Ready = std::pair<bool, std::string>;

class PartnerWithoutProxy : public ChannelTest {};

TEST_F(PartnerWithoutProxy, IsConnectedAndLostAllTheSame) {
    const RecordingChannel channel;
    auto peer = std::make_unique<ScriptedPeer>(Address());
    const std::string name = peer->UniqueName();
    ClearLog();
    peer->Announce("_CLIENT_SYN_ACK");
    Settle(*peer);
    auto established = EstablishLog(name);
    established.insert(established.begin() + 3,
                       Error("Error while registering proxy  no proxy today\n\n"));
    EXPECT_EQ(Log(), Join({AnnouncementLog("SynAck", "_CLIENT_SYN_ACK", Self(), name), established,
                           BroadcastLog("_SERVICE_ACK", Self())}));
    peer.reset();
    EXPECT_TRUE(RunUntil([&] { return channel.readiness.size() == 2; }));
    EXPECT_THAT(channel.readiness, ElementsAre(Ready{true, name}, Ready{false, name}));
}

}  // namespace
}  // namespace applist::test
