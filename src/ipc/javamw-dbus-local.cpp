// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "ipc/javamw-dbus-local.h"

#include <iostream>
#include <iterator>
#include <set>
#include <utility>

#include <gio/gio.h>

#include "CallbackGuard.h"
#include "Log.h"
#include "ipc/gio-support.h"

namespace {

constexpr uint32_t DO_NOT_QUEUE = 4;   // flag of RequestName: fail if the name is owned
constexpr uint32_t PRIMARY_OWNER = 1;  // reply of RequestName
// GIO's own limit of 25 seconds.
constexpr int DEFAULT_TIMEOUT = -1;
// A busy bus answers within this time, and the list closes at most this much later.
constexpr int FLUSH_TIMEOUT_MS = 1000;

// The channels that callbacks may use. The object registration and the three name subscriptions
// last as long as the process' shared bus connection, which other references may keep alive after a
// channel is destroyed. Main thread only.
std::set<const void*>& LiveChannels() {
    static std::set<const void*> channels;
    return channels;
}

// Runs body with the channel that userData points to. If the connection is null or the channel is
// no longer alive, logs an error with the position place (the callback's) instead.
template <typename Body>
void WithChannel(const GDBusConnection* connection, void* userData, Body&& body,
                 applist::LogPlace place = applist::LogPlace::Here()) noexcept {
    if (connection == nullptr || LiveChannels().count(userData) == 0) {
        LOG_ERROR_AT(place, "Empty user_data or connection not valid.\n\n");
        return;
    }
    applist::GuardCallback(
        [&] { std::forward<Body>(body)(*static_cast<JavaMWDbusLocal*>(userData)); });
}

std::string TextOf(const std::vector<char>& data) {
    return {data.begin(), data.end()};
}

void PrintLine(const std::vector<char>& data) {
    std::cout.write(data.data(), std::ssize(data)) << '\n';
}

void Reply(GDBusMethodInvocation* invocation, const std::vector<char>& reply) {
    GVariant* payload = applist::PayloadOf(reply);
    // The function consumes a reference to the invocation.
    g_object_ref(invocation);
    g_dbus_method_invocation_return_value(invocation, payload);
}

void ReplyWithError(GDBusMethodInvocation* invocation, GDBusError code, const std::string& text) {
    // The function consumes a reference to the invocation.
    g_object_ref(invocation);
    g_dbus_method_invocation_return_error_literal(invocation, G_DBUS_ERROR, code, text.c_str());
}

void Unwatch(uint32_t& id) {
    if (id != 0) {
        g_bus_unwatch_name(std::exchange(id, 0));
    }
}

}  // namespace

const char* const JavaMWDbusLocal::INTERFACE_XML =
    "<node>"
    "  <interface name='org.vantu.javamw.DbusCommunication'>"
    "    <method name='Send'>"
    "      <arg type='ay' name='data' direction='in'/>"
    "      <arg type='ay' name='response' direction='out'/>"
    "    </method>"
    "  </interface>"
    "</node>";

const GDBusInterfaceVTable JavaMWDbusLocal::m_vtable = {cb_MethodCall, nullptr, nullptr, {nullptr}};

JavaMWDbusLocal::JavaMWDbusLocal(Members members) : m_name(std::move(members.name)) {
    LiveChannels().insert(this);
}

// Delegates, so that the destructor runs if the body throws. Otherwise GIO would call back into a
// channel that does not exist.
JavaMWDbusLocal::JavaMWDbusLocal(std::string name) : JavaMWDbusLocal(Members{std::move(name)}) {
    LOG_DEBUG("Constructor\n\n");
    // Required before GLib 2.36; later versions ignore the call.
    G_GNUC_BEGIN_IGNORE_DEPRECATIONS
    g_type_init();
    G_GNUC_END_IGNORE_DEPRECATIONS
    m_introspectionData = g_dbus_node_info_new_for_xml(INTERFACE_XML, nullptr);
    LOG_DEBUG("XML parsed\n\n");
    m_objectPath = std::string(JAVAMW_DBUS_OBJ_NAME) + "/" + m_name;
    if (!Connect()) {
        return;
    }
    RegisterObject();
    SubscribeToAnnouncements();
    // Announced last: partners may call the object as soon as they see the announcement.
    LOG_DEBUG("Notify others using name %s\n\n", HandshakeName("", "").c_str());
    m_announced = 1;
    Announce(JAVAMW_DBUS_SYN_SUFFIX);
}

JavaMWDbusLocal::~JavaMWDbusLocal() {
    m_announced = 0;
    if (m_ownerId != 0) {
        g_bus_unown_name(std::exchange(m_ownerId, 0));
    }
    // Deliberately not g_dbus_connection_signal_unsubscribe(): GLib's warnings about these unknown
    // watches mark the end of the channel in a debug log. The subscriptions end with the
    // connection, and LiveChannels() refuses their callbacks until then.
    Unwatch(m_synSubscriptionId);
    Unwatch(m_synAckSubscriptionId);
    Unwatch(m_ackSubscriptionId);
    for (auto& [uniqueName, partner] : m_partner) {
        ReleaseResources(m_connection, partner);
    }
    m_partner.clear();
    g_clear_pointer(&m_introspectionData, g_dbus_node_info_unref);
    Flush();
    if (m_connection != nullptr) {
        g_signal_handlers_disconnect_by_data(m_connection, this);
    }
    g_clear_object(&m_connection);
    LiveChannels().erase(this);
}

// Ensures that the viewer's choice is sent, because the application ends right after it. The bus
// library sends from a separate thread, which ends with the program, so messages may be lost. The
// daemon handles messages in order, so its reply to one more call proves that it has received all
// earlier ones. GetId is used because every system bus allows it, while most deny Ping.
// g_dbus_connection_flush_sync() would not prove delivery and would wait forever for a hanging
// daemon.
void JavaMWDbusLocal::Flush() const {
    if (m_connection == nullptr || g_dbus_connection_is_closed(m_connection) != FALSE) {
        return;
    }
    g_autoptr(GError) error = nullptr;
    g_autoptr(GVariant) answer = g_dbus_connection_call_sync(
        m_connection, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
        "GetId", nullptr, nullptr, G_DBUS_CALL_FLAGS_NONE, FLUSH_TIMEOUT_MS, nullptr, &error);
    // If the connection closes during the call, the partners are gone, too.
    if (answer == nullptr && !g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CLOSED)) {
        LOG_ERROR("The last messages may be lost: [%d] %s\n\n", error->code, error->message);
    }
}

bool JavaMWDbusLocal::Connect() {
    LOG_DEBUG("Getting connection to SYSTEM_BUS\n\n");
    GError* error = nullptr;
    m_connection = g_bus_get_sync(G_BUS_TYPE_SYSTEM, nullptr, &error);
    if (error != nullptr) {
        applist::LogAndClear("Error while connecting to system bus", error);
        return false;
    }
    g_signal_connect(m_connection, "closed", G_CALLBACK(cb_Closed), this);
    m_uniqueName = g_dbus_connection_get_unique_name(m_connection);
    LOG_DEBUG("Working with unique name %s\n\n", m_uniqueName.c_str());
    return true;
}

// The bus library ends the program after this callback without logging anything. Does not use the
// channel, so that it may be called after the channel's end.
void JavaMWDbusLocal::cb_Closed(GDBusConnection* /*connection*/, int /*remote_peer_vanished*/,
                                GError* error, void* /*user_data*/) {
    if (error != nullptr) {
        LOG_ERROR("Connection to system bus lost [%d] %s\n\n", error->code, error->message);
    }
}

void JavaMWDbusLocal::RegisterObject() {
    LOG_DEBUG("Registering Object and Interface on path %s\n\n", m_objectPath.c_str());
    GError* error = nullptr;
    m_registrationId = g_dbus_connection_register_object(m_connection, m_objectPath.c_str(),
                                                         m_introspectionData->interfaces[0],
                                                         &m_vtable, this, nullptr, &error);
    applist::LogAndClear("Error while registering object", error);
}

std::string JavaMWDbusLocal::HandshakeName(const char* side, const char* suffix) const {
    return std::string(JAVAMW_DBUS_PREFIX) + "." + m_name + side + suffix;
}

void JavaMWDbusLocal::Announce(const char* suffix) {
    std::string name = HandshakeName(BROADCAST_PREFIX, suffix);
    BroadcastName(name);
}

void JavaMWDbusLocal::BroadcastName(std::string& name) {
    LOG_DEBUG("BroadcastName %s Public unique name %s\n\n", name.c_str(), m_uniqueName.c_str());
    GError* error = nullptr;
    g_autoptr(GVariant) reply =
        CallDaemon("RequestName", g_variant_new("(su)", name.c_str(), DO_NOT_QUEUE), &error);
    applist::LogAndClear("Error during request name call", error);
    if (reply == nullptr) {
        LOG_ERROR("Cannot get response for name request\n\n");
        return;
    }
    uint32_t code = 0;
    g_variant_get(reply, "(u)", &code);
    if (code != PRIMARY_OWNER) {
        LOG_ERROR("Cannot own name due to return code = %d\n\n", static_cast<int>(code));
        return;
    }
    LOG_DEBUG("Become primary owner for name. Releasing it.\n\n");
    g_autoptr(GVariant) released =
        CallDaemon("ReleaseName", g_variant_new("(s)", name.c_str()), nullptr);
    if (released == nullptr) {
        LOG_ERROR("Release failed due to empty response.\n\n");
    }
}

GVariant* JavaMWDbusLocal::CallDaemon(const char* method, GVariant* parameters, GError** error) {
    // Takes the floating reference even without a connection, so that the parameters are always
    // freed.
    g_autoptr(GVariant) arguments = g_variant_ref_sink(parameters);
    if (m_connection == nullptr) {
        return nullptr;
    }
    return g_dbus_connection_call_sync(m_connection, "org.freedesktop.DBus",
                                       "/org/freedesktop/DBus", "org.freedesktop.DBus", method,
                                       arguments, G_VARIANT_TYPE("(u)"), G_DBUS_CALL_FLAGS_NONE,
                                       DEFAULT_TIMEOUT, nullptr, error);
}

// --- the handshake: how the channel finds and loses partners ---
//
// A side announces itself by owning a bus name for an instant. The NameOwnerChanged signal of the
// release then gives the other side its unique name.

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
    WithChannel(connection, user_data,
                [&](JavaMWDbusLocal& channel) { channel.OnSyn(connection, parameters); });
}

void JavaMWDbusLocal::cb_SynAckNameOwnerChanged(GDBusConnection* connection, const char* /*sender*/,
                                                const char* /*object_path*/,
                                                const char* /*interface_name*/,
                                                const char* /*signal_name*/, GVariant* parameters,
                                                void* user_data) {
    LOG_DEBUG("cb_SynAckNameOwnerChanged called\n");
    WithChannel(connection, user_data,
                [&](JavaMWDbusLocal& channel) { channel.OnSynAck(connection, parameters); });
}

void JavaMWDbusLocal::cb_AckNameOwnerChanged(GDBusConnection* connection, const char* /*sender*/,
                                             const char* /*object_path*/,
                                             const char* /*interface_name*/,
                                             const char* /*signal_name*/, GVariant* parameters,
                                             void* user_data) {
    LOG_DEBUG("cb_AckNameOwnerChanged called\n");
    WithChannel(connection, user_data,
                [&](JavaMWDbusLocal& channel) { channel.OnAck(parameters); });
}

void JavaMWDbusLocal::cb_PartnerNameVanished(GDBusConnection* connection, const char* name,
                                             void* user_data) {
    LOG_DEBUG("cb_PartnerNameVanished name=%s\n\n", name);
    WithChannel(connection, user_data,
                [&](JavaMWDbusLocal& channel) { channel.OnPartnerVanished(connection, name); });
}

void JavaMWDbusLocal::OnSyn(GDBusConnection* connection, GVariant* parameters) {
    const PTAutoLock lock(m_mutex);
    const auto owner = Announcer("cb_SynNameOwnerChanged", parameters);
    // Subscribes before the answer, because the partner may send signals as soon as it sees that.
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
        // Before the listener is called: it sends an event, which only connected partners get.
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
    // The watch also reports a partner that has already left the bus, so its record does not stay.
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

// --- messages ---

std::vector<char> JavaMWDbusLocal::SendMessage(std::vector<char>& /*data*/) {
    LOG_DEBUG("Message sending is no supported!\n");
    return {};
}

void JavaMWDbusLocal::SendNotification(std::vector<char>& data, const std::string& partner) {
    const auto found = m_partner.find(partner);
    if (found == m_partner.end()) {
        LOG_ERROR("Communication partner %s not found in m_partner map.\n\n", partner.c_str());
        return;
    }
    if (found->second.state != ConnectionPartner::CONNECTED) {
        LOG_ERROR("Connection not set.\n\n");
        return;
    }
    if (found->second.signalSubscriptionId == 0) {
        LOG_ERROR("SignalSubscription not ready\n\n");
        return;
    }
    LOG_DEBUG("Sending signal with %d bytes\n\n", static_cast<int>(data.size()));
    GError* error = nullptr;
    // Not floating, because GIO does not take the parameters of a signal to an empty name, which a
    // partner has while it is being lost.
    g_autoptr(GVariant) payload = g_variant_ref_sink(applist::PayloadOf(data));
    g_dbus_connection_emit_signal(m_connection, found->second.uniqueName.c_str(),
                                  m_objectPath.c_str(), JAVAMW_DBUS_OBJ_IFACE, JAVAMW_DBUS_SIG_NAME,
                                  payload, &error);
    applist::LogAndClear("Error while sending signal", error);
}

void JavaMWDbusLocal::SendNotification(std::vector<char>& data) {
    LOG_DEBUG("Number of partners to iterate is: %d\n\n", static_cast<int>(m_partner.size()));
    // Sending only queues the message: it does not run callbacks that could change the map.
    for (const auto& [uniqueName, partner] : m_partner) {
        LOG_DEBUG("Sending notification for partner: %s\n\n", uniqueName.c_str());
        SendNotification(data, uniqueName);
    }
}

bool JavaMWDbusLocal::IsConnectionReady(const std::string& partner) {
    return m_partner[partner].state == ConnectionPartner::CONNECTED;
}

std::vector<char> JavaMWDbusLocal::HandleMessage(std::vector<char>& data) {
    LOG_DEBUG("Default handler - HandleMessage = %s\n\n", TextOf(data).c_str());
    PrintLine(data);
    const std::string reply = "Default handler from :" + m_uniqueName;
    return {reply.begin(), reply.end()};
}

void JavaMWDbusLocal::HandleNotification(std::vector<char>& data) {
    LOG_DEBUG("Default handler - HandleNotification = %s\n\n", TextOf(data).c_str());
    PrintLine(data);
}

void JavaMWDbusLocal::HandleConnectionReady(bool ready, const std::string& /*partner*/) {
    LOG_DEBUG("Default handler - HandleConnectionReady = %d\n\n", ready ? 1 : 0);
}

void JavaMWDbusLocal::cb_MethodCall(GDBusConnection* connection, const char* sender,
                                    const char* object_path, const char* interface_name,
                                    const char* method_name, GVariant* parameters,
                                    GDBusMethodInvocation* invocation, void* user_data) {
    LOG_DEBUG("cb_MethodCall sender=%s obj_path=%s iface_name=%s method_name=%s\n\n", sender,
              object_path, interface_name, method_name);
    // This callback owns the invocation, which would keep the connection alive if it leaked.
    g_autoptr(GDBusMethodInvocation) owned = invocation;
    WithChannel(connection, user_data, [&](JavaMWDbusLocal& channel) {
        channel.OnMethodCall(object_path, parameters, owned);
    });
}

void JavaMWDbusLocal::OnMethodCall(const char* objectPath, GVariant* parameters,
                                   GDBusMethodInvocation* invocation) {
    if (objectPath != m_objectPath) {
        return;
    }
    const bool handled = applist::GuardCallback(false, [&] {
        Answer(parameters, invocation);
        return true;
    });
    if (!handled) {
        // Empty, as for every failed call. Without a reply the caller would wait for its timeout.
        Reply(invocation, {});
    }
}

void JavaMWDbusLocal::Answer(GVariant* parameters, GDBusMethodInvocation* invocation) {
    auto data = applist::BytesOf(parameters);
    if (!data) {
        // GIO has refused such calls by the declared interface before they arrive here.
        LOG_ERROR("Call without a byte array is ignored.\n\n");
        return;
    }
    const std::vector<char> reply = HandleMessage(*data);
    if (reply.size() > MAX_REPLY_BYTES) {
        LOG_ERROR("Reply with %zu bytes exceeds the limit of %zu bytes\n\n", reply.size(),
                  MAX_REPLY_BYTES);
        ReplyWithError(invocation, G_DBUS_ERROR_LIMITS_EXCEEDED,
                       "The reply of " + std::to_string(reply.size()) + " bytes is too large");
        return;
    }
    Reply(invocation, reply);
}

void JavaMWDbusLocal::cb_SignalCall(GDBusConnection* connection, const char* sender,
                                    const char* object_path, const char* interface_name,
                                    const char* signal_name, GVariant* parameters,
                                    void* user_data) {
    LOG_DEBUG("cb_SignalCall sender=%s obj_path=%s iface_name=%s signal_name=%s\n\n", sender,
              object_path, interface_name, signal_name);
    WithChannel(connection, user_data, [&](JavaMWDbusLocal& channel) {
        channel.OnSignal(sender, object_path, signal_name, parameters);
    });
}

void JavaMWDbusLocal::OnSignal(const char* sender, const char* objectPath, const char* signalName,
                               GVariant* parameters) {
    if (objectPath != m_objectPath) {
        return;
    }
    // GIO does not check the types of signals, because the interface does not declare any.
    auto data = applist::BytesOf(parameters);
    if (!data) {
        LOG_ERROR("Signal %s from %s carries %s instead of (ay) and is ignored.\n\n", signalName,
                  sender,
                  parameters != nullptr ? g_variant_get_type_string(parameters) : "nothing");
        return;
    }
    HandleNotification(*data);
}
