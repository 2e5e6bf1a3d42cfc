// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The handshake: how the channel finds and loses partners. A side announces itself by owning a bus
// name for an instant. The NameOwnerChanged signal of the release then gives the other side its
// unique name.
#include <utility>

#include <gio/gio.h>

#include "ipc/dbus-callback.h"
#include "ipc/gio-support.h"
#include "ipc/javamw-dbus-local.h"

void JavaMWDbusLocal::SubscribeToAnnouncements() {
    LOG_DEBUG("Monitoring %s name waiting for communication partner\n\n",
              HandshakeName("", "").c_str());
    m_synSubscriptionId = SubscribeToName(HandshakeName(LISTEN_PREFIX, JAVAMW_DBUS_SYN_SUFFIX),
                                          cb_SynNameOwnerChanged);
    m_synAckSubscriptionId = SubscribeToName(
        HandshakeName(LISTEN_PREFIX, JAVAMW_DBUS_SYNACK_SUFFIX), cb_SynAckNameOwnerChanged);
    m_ackSubscriptionId = SubscribeToName(HandshakeName(LISTEN_PREFIX, JAVAMW_DBUS_ACK_SUFFIX),
                                          cb_AckNameOwnerChanged);
}

uint32_t JavaMWDbusLocal::SubscribeToName(const std::string& name, SignalCallback callback) {
    return g_dbus_connection_signal_subscribe(
        m_connection, "org.freedesktop.DBus", "org.freedesktop.DBus", "NameOwnerChanged",
        "/org/freedesktop/DBus", name.c_str(), G_DBUS_SIGNAL_FLAGS_NONE, callback, this, nullptr);
}

void JavaMWDbusLocal::cb_SynNameOwnerChanged(GDBusConnection* connection, const char* /*sender*/,
                                             const char* /*object_path*/,
                                             const char* /*interface_name*/,
                                             const char* /*signal_name*/, GVariant* parameters,
                                             void* user_data) {
    LOG_DEBUG("cb_SynNameOwnerChanged called\n");
    applist::WithChannel(connection, user_data,
                         [&](JavaMWDbusLocal& channel) { channel.OnSyn(connection, parameters); });
}

void JavaMWDbusLocal::cb_SynAckNameOwnerChanged(GDBusConnection* connection, const char* /*sender*/,
                                                const char* /*object_path*/,
                                                const char* /*interface_name*/,
                                                const char* /*signal_name*/, GVariant* parameters,
                                                void* user_data) {
    LOG_DEBUG("cb_SynAckNameOwnerChanged called\n");
    applist::WithChannel(connection, user_data, [&](JavaMWDbusLocal& channel) {
        channel.OnSynAck(connection, parameters);
    });
}

void JavaMWDbusLocal::cb_AckNameOwnerChanged(GDBusConnection* connection, const char* /*sender*/,
                                             const char* /*object_path*/,
                                             const char* /*interface_name*/,
                                             const char* /*signal_name*/, GVariant* parameters,
                                             void* user_data) {
    LOG_DEBUG("cb_AckNameOwnerChanged called\n");
    applist::WithChannel(connection, user_data,
                         [&](JavaMWDbusLocal& channel) { channel.OnAck(parameters); });
}

void JavaMWDbusLocal::cb_PartnerNameVanished(GDBusConnection* connection, const char* name,
                                             void* user_data) {
    LOG_DEBUG("cb_PartnerNameVanished name=%s\n\n", name);
    applist::WithChannel(connection, user_data, [&](JavaMWDbusLocal& channel) {
        channel.OnPartnerVanished(connection, name);
    });
}

void JavaMWDbusLocal::OnSyn(GDBusConnection* connection, GVariant* parameters) {
    const PTAutoLock lock(m_mutex);
    const auto owner = Announcer("cb_SynNameOwnerChanged", parameters);
    ConnectionPartner* partner = owner ? Establish(connection, *owner) : nullptr;
    if (partner != nullptr) {
        Announce(JAVAMW_DBUS_SYNACK_SUFFIX);
        partner->state = ConnectionPartner::SYN_SEEN;
    }
}

void JavaMWDbusLocal::OnSynAck(GDBusConnection* connection, GVariant* parameters) {
    const PTAutoLock lock(m_mutex);
    const auto owner = Announcer("cb_SynAckNameOwnerChanged", parameters);
    ConnectionPartner* partner = owner ? Establish(connection, *owner) : nullptr;
    if (partner != nullptr) {
        Announce(JAVAMW_DBUS_ACK_SUFFIX);
        partner->state = ConnectionPartner::CONNECTED;
        HandleConnectionReady(true, *owner);
    }
}

void JavaMWDbusLocal::OnAck(GVariant* parameters) {
    const PTAutoLock lock(m_mutex);
    const auto owner = Announcer("cb_AckNameOwnerChanged", parameters);
    if (!owner) {
        return;
    }
    // Also creates an empty record for an unknown partner, which is then refused.
    ConnectionPartner& partner = m_partner[*owner];
    if (partner.watchId == 0 || partner.signalSubscriptionId == 0) {
        // The text says "already exists" although the partner is missing, because log readers know
        // this line as the one for every refused announcement.
        LOG_DEBUG("Owner %s already exists\n", owner->c_str());
        return;
    }
    partner.state = ConnectionPartner::CONNECTED;
    HandleConnectionReady(true, *owner);
}

std::optional<std::string> JavaMWDbusLocal::Announcer(const char* callback,
                                                      GVariant* parameters) const {
    auto change = applist::NameOwnerChangeOf(parameters);
    if (!change) {
        LOG_ERROR("%s without a name and its owners is ignored.\n\n", callback);
        return std::nullopt;
    }
    LOG_DEBUG("%s %s %s from '%s' => '%s' \n\n", callback, change->name.c_str(),
              m_uniqueName.c_str(), change->oldOwner.c_str(), change->newOwner.c_str());
    // Only the release of a name by another connection is an announcement.
    if (!change->newOwner.empty() || change->oldOwner == m_uniqueName) {
        return std::nullopt;
    }
    return std::move(change->oldOwner);
}

ConnectionPartner* JavaMWDbusLocal::Establish(GDBusConnection* connection,
                                              const std::string& owner) {
    ConnectionPartner& partner = m_partner[owner];
    if (partner.watchId != 0 || partner.signalSubscriptionId != 0) {
        LOG_DEBUG("Owner %s already exists\n", owner.c_str());
        return nullptr;
    }
    LOG_DEBUG("Monitor unique name %s\n\n", owner.c_str());
    partner.watchId =
        g_bus_watch_name_on_connection(connection, owner.c_str(), G_BUS_NAME_WATCHER_FLAGS_NONE,
                                       nullptr, cb_PartnerNameVanished, this, nullptr);
    LOG_DEBUG("Partner is available and has unique name %s\n\n", owner.c_str());
    partner.uniqueName = owner;
    CreateProxy(connection, partner);
    LOG_DEBUG("Subscribe for signals from %s on object %s.\n\n", partner.uniqueName.c_str(),
              m_objectPath.c_str());
    partner.signalSubscriptionId = g_dbus_connection_signal_subscribe(
        connection, partner.uniqueName.c_str(), JAVAMW_DBUS_OBJ_IFACE, nullptr,
        m_objectPath.c_str(), nullptr, G_DBUS_SIGNAL_FLAGS_NONE, cb_SignalCall, this, nullptr);
    return &partner;
}

void JavaMWDbusLocal::CreateProxy(GDBusConnection* connection, ConnectionPartner& partner) const {
    LOG_DEBUG("Create proxy for %s on obj %s\n\n", partner.uniqueName.c_str(),
              m_objectPath.c_str());
    g_autoptr(GError) error = nullptr;
    partner.proxy = g_dbus_proxy_new_sync(connection, G_DBUS_PROXY_FLAGS_DO_NOT_LOAD_PROPERTIES,
                                          nullptr, partner.uniqueName.c_str(), m_objectPath.c_str(),
                                          JAVAMW_DBUS_OBJ_IFACE, nullptr, &error);
    if (error != nullptr) {
        // The partner stays usable, because the proxy is never called.
        LOG_ERROR("Error while registering proxy  %s\n\n", error->message);
    }
}

void JavaMWDbusLocal::OnPartnerVanished(GDBusConnection* connection, const std::string& name) {
    const PTAutoLock lock(m_mutex);
    ConnectionPartner& partner = m_partner[name];
    if (partner.uniqueName == name) {
        LOG_DEBUG("Connection lost with partner id=%s\n\n", name.c_str());
        partner.uniqueName.clear();
        HandleConnectionReady(false, name);
        if (partner.watchId != 0) {
            LOG_DEBUG("Stop watching old partner messages.\n\n");
        }
        ReleaseResources(connection, partner);
        partner.state = 0;
    }
    LOG_DEBUG("Removed %s connection owner from m_partner\n", name.c_str());
    // The record is removed even if it was empty.
    m_partner.erase(name);
}

void JavaMWDbusLocal::ReleaseResources(GDBusConnection* connection, ConnectionPartner& partner) {
    if (partner.watchId != 0) {
        g_bus_unwatch_name(std::exchange(partner.watchId, 0));
    }
    g_clear_object(&partner.proxy);
    if (partner.signalSubscriptionId != 0) {
        g_dbus_connection_signal_unsubscribe(connection,
                                             std::exchange(partner.signalSubscriptionId, 0));
    }
}
