// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "fakes/HeldBus.h"

#include <algorithm>
#include <new>
#include <utility>

#include "ipc/javamw-dbus-local.h"

namespace applist::test {
namespace {

constexpr const char* DAEMON = "org.freedesktop.DBus";

std::string Text(const char* text) {
    return text != nullptr ? text : "";
}

// A connection object without a socket: the transport only stores it and connects to its signals.
GDBusConnection* Connection() {
    static auto* const connection =
        G_DBUS_CONNECTION(g_object_new(G_TYPE_DBUS_CONNECTION, nullptr));
    return connection;
}

std::string BytesIn(GVariant* payload) {
    g_autoptr(GVariant) array = g_variant_get_child_value(payload, 0);
    gsize size = 0;
    const auto* bytes =
        static_cast<const char*>(g_variant_get_fixed_array(array, &size, sizeof(char)));
    return {bytes, size};
}

void OnProxyReleased(void* name, GObject* /*proxy*/) {
    auto* const owner = static_cast<std::string*>(name);
    TheHeldBus().ProxyReleased(*owner);
    delete owner;
}

}  // namespace

HeldBus& TheHeldBus() {
    static HeldBus bus;
    return bus;
}

GVariant* HeldBus::Payload(std::string_view bytes) {
    GVariant* array =
        g_variant_new_fixed_array(G_VARIANT_TYPE_BYTE, bytes.data(), bytes.size(), sizeof(char));
    return g_variant_new_tuple(&array, 1);
}

void HeldBus::DeliverChange(const std::string& name, const char* from, const char* to) {
    const auto subscriptions = m_subscriptions;
    g_autoptr(GVariant) change = g_variant_ref_sink(g_variant_new("(sss)", name.c_str(), from, to));
    for (const auto& [id, subscription] : subscriptions) {
        if (subscription.sender == DAEMON && subscription.name == name) {
            subscription.callback(Connection(), DAEMON, "/org/freedesktop/DBus", DAEMON,
                                  "NameOwnerChanged", change, subscription.data);
        }
    }
}

void HeldBus::Announce(const std::string& name, const std::string& owner) {
    DeliverChange(name, "", owner.c_str());
    DeliverChange(name, owner.c_str(), "");
}

void HeldBus::Vanish(const std::string& name) {
    const auto watches = m_watches;
    for (const auto& [id, watch] : watches) {
        if (watch.name == name) {
            watch.callback(Connection(), name.c_str(), watch.data);
        }
    }
}

size_t HeldBus::Watches(const std::string& name) const {
    return static_cast<size_t>(
        std::count_if(m_watches.begin(), m_watches.end(),
                      [&](const auto& watch) { return watch.second.name == name; }));
}

size_t HeldBus::Proxies(const std::string& name) const {
    return m_proxies.count(name);
}

size_t HeldBus::Subscriptions(const std::string& sender) const {
    return static_cast<size_t>(std::count_if(
        m_subscriptions.begin(), m_subscriptions.end(),
        [&](const auto& subscription) { return subscription.second.sender == sender; }));
}

std::vector<std::string> HeldBus::TakeSignals() {
    return std::exchange(m_signals, {});
}

std::vector<std::string> HeldBus::TakeOwnedNames() {
    return std::exchange(m_ownedNames, {});
}

void HeldBus::RecordEnd(const char* verb, guint id) {
    const auto watch = m_watches.find(id);
    const auto subscription = m_subscriptions.find(id);
    Record(verb, " ",
           watch != m_watches.end()                ? watch->second.name
           : subscription != m_subscriptions.end() ? subscription->second.subject
                                                   : "nothing");
}

guint HeldBus::Subscribe(const char* sender, const char* name, const std::string& subject,
                         GDBusSignalCallback callback, void* data) {
    m_subscriptions[++m_lastSubscription] = {Text(sender), Text(name), subject, callback, data};
    return m_lastSubscription;
}

guint HeldBus::Watch(const char* name, GBusNameVanishedCallback callback, void* data) {
    if (watchFails) {
        return 0;
    }
    m_watches[++m_lastWatch] = {Text(name), callback, data};
    return m_lastWatch;
}

std::optional<std::string> HeldBus::Call(const std::string& sender, std::string_view bytes) {
    m_reply.reset();
    g_autoptr(GVariant) parameters = g_variant_ref_sink(Payload(bytes));
    // The transport only passes the invocation to the functions that reply, and releases it.
    auto* const invocation =
        reinterpret_cast<GDBusMethodInvocation*>(g_object_new(G_TYPE_OBJECT, nullptr));
    m_object.table->method_call(
        Connection(), sender.c_str(), m_object.path.c_str(), JavaMWDbusLocal::JAVAMW_DBUS_OBJ_IFACE,
        JavaMWDbusLocal::JAVAMW_DBUS_OBJ_METHOD, parameters, invocation, m_object.data);
    return m_reply;
}

void HeldBus::Signal(const std::string& sender, GVariant* parameters) {
    const auto subscriptions = m_subscriptions;
    g_autoptr(GVariant) held = g_variant_ref_sink(parameters);
    for (const auto& [id, subscription] : subscriptions) {
        if (subscription.sender == sender) {
            subscription.callback(Connection(), sender.c_str(), m_object.path.c_str(),
                                  JavaMWDbusLocal::JAVAMW_DBUS_OBJ_IFACE,
                                  JavaMWDbusLocal::JAVAMW_DBUS_SIG_NAME, held, subscription.data);
        }
    }
}

guint HeldBus::Register(const char* path, const GDBusInterfaceVTable* table, void* data) {
    m_object = {path, table, data};
    return 1;
}

void HeldBus::Emit(const char* destination, GVariant* parameters) {
    g_autoptr(GVariant) held = g_variant_ref_sink(parameters);
    std::string signal = Text(destination) + " ";
    for (const char byte : BytesIn(held)) {
        constexpr const char* DIGITS = "0123456789abcdef";
        signal += DIGITS[static_cast<unsigned char>(byte) / 16];
        signal += DIGITS[static_cast<unsigned char>(byte) % 16];
    }
    m_signals.push_back(signal);
}

void HeldBus::Reply(GVariant* parameters) {
    g_autoptr(GVariant) held = g_variant_ref_sink(parameters);
    m_reply = BytesIn(held);
}

GVariant* HeldBus::CallDaemon(const std::string& method, GVariant* parameters, GError** error) {
    constexpr uint32_t owner = 1;
    constexpr uint32_t exists = 3;
    if (method == outOfMemoryIn) {
        throw std::bad_alloc();
    }
    if (const auto answer = answers.find(method); answer != answers.end()) {
        return g_variant_ref_sink(g_variant_new("(u)", answer->second));
    }
    if (method != "RequestName") {
        return g_variant_ref_sink(g_variant_new("(u)", owner));
    }
    switch (std::exchange(m_nextName, NextName::GRANTED)) {
        case NextName::REFUSED:
            return g_variant_ref_sink(g_variant_new("(u)", exists));
        case NextName::REPLY_LOST:
            g_set_error_literal(error, G_IO_ERROR, G_IO_ERROR_TIMED_OUT, "no reply");
            return nullptr;
        default:
            break;
    }
    const char* name = nullptr;
    g_variant_get(parameters, "(&su)", &name, nullptr);
    m_ownedNames.emplace_back(name);
    return g_variant_ref_sink(g_variant_new("(u)", owner));
}

GDBusProxy* HeldBus::NewProxy(const char* name, GError** error) {
    if (proxyFails) {
        g_set_error_literal(error, G_IO_ERROR, G_IO_ERROR_FAILED, "no proxy today");
        return nullptr;
    }
    m_proxies.insert(name);
    // The transport only stores and releases it.
    auto* const object = static_cast<GObject*>(g_object_new(G_TYPE_OBJECT, nullptr));
    g_object_weak_ref(object, OnProxyReleased, new std::string(name));
    return reinterpret_cast<GDBusProxy*>(object);
}

void HeldBus::ProxyReleased(const std::string& name) {
    Record("release the proxy");
    if (const auto proxy = m_proxies.find(name); proxy != m_proxies.end()) {
        m_proxies.erase(proxy);
    }
}

}  // namespace applist::test

using applist::test::Connection;
using applist::test::HeldBus;
using applist::test::TheHeldBus;

// The linker sends calls of NAME to __wrap_NAME.
// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
extern "C" {
decltype(g_bus_get_sync) __wrap_g_bus_get_sync;
decltype(g_dbus_connection_get_unique_name) __wrap_g_dbus_connection_get_unique_name;
decltype(g_dbus_connection_is_closed) __wrap_g_dbus_connection_is_closed;
decltype(g_dbus_connection_register_object) __wrap_g_dbus_connection_register_object;
decltype(g_dbus_connection_signal_subscribe) __wrap_g_dbus_connection_signal_subscribe;
decltype(g_dbus_connection_signal_unsubscribe) __wrap_g_dbus_connection_signal_unsubscribe;
decltype(g_bus_watch_name_on_connection) __wrap_g_bus_watch_name_on_connection;
decltype(g_bus_unwatch_name) __wrap_g_bus_unwatch_name;
decltype(g_dbus_proxy_new_sync) __wrap_g_dbus_proxy_new_sync;
decltype(g_dbus_connection_call_sync) __wrap_g_dbus_connection_call_sync;
decltype(g_dbus_connection_emit_signal) __wrap_g_dbus_connection_emit_signal;
decltype(g_dbus_method_invocation_return_value) __wrap_g_dbus_method_invocation_return_value;

GDBusConnection* __wrap_g_bus_get_sync(GBusType, GCancellable*, GError**) {
    return static_cast<GDBusConnection*>(g_object_ref(Connection()));
}

const gchar* __wrap_g_dbus_connection_get_unique_name(GDBusConnection*) {
    return HeldBus::SELF;
}

gboolean __wrap_g_dbus_connection_is_closed(GDBusConnection*) {
    return FALSE;
}

guint __wrap_g_dbus_connection_register_object(GDBusConnection*, const gchar* path,
                                               GDBusInterfaceInfo*,
                                               const GDBusInterfaceVTable* table, gpointer data,
                                               GDestroyNotify, GError**) {
    return TheHeldBus().Register(path, table, data);
}

guint __wrap_g_dbus_connection_signal_subscribe(GDBusConnection*, const gchar* sender,
                                                const gchar* interface, const gchar* member,
                                                const gchar* path, const gchar* name,
                                                GDBusSignalFlags flags,
                                                GDBusSignalCallback callback, gpointer data,
                                                GDestroyNotify) {
    std::string subject;
    for (const char* part : {sender, interface, member, path, name}) {
        subject += (subject.empty() ? "" : " ") + std::string(part != nullptr ? part : "any");
    }
    TheHeldBus().Record("subscribe ", subject, ", flags ", flags);
    return TheHeldBus().Subscribe(sender, name, subject, callback, data);
}

void __wrap_g_dbus_connection_signal_unsubscribe(GDBusConnection*, guint id) {
    TheHeldBus().RecordEnd("unsubscribe", id);
    TheHeldBus().Unsubscribe(id);
}

guint __wrap_g_bus_watch_name_on_connection(GDBusConnection*, const gchar* name,
                                            GBusNameWatcherFlags flags, GBusNameAppearedCallback,
                                            GBusNameVanishedCallback vanished, gpointer data,
                                            GDestroyNotify) {
    TheHeldBus().Record("watch ", name, ", flags ", flags);
    return TheHeldBus().Watch(name, vanished, data);
}

void __wrap_g_bus_unwatch_name(guint id) {
    TheHeldBus().RecordEnd("unwatch", id);
    TheHeldBus().Unwatch(id);
}

GDBusProxy* __wrap_g_dbus_proxy_new_sync(GDBusConnection*, GDBusProxyFlags flags,
                                         GDBusInterfaceInfo*, const gchar* name, const gchar* path,
                                         const gchar* interface, GCancellable*, GError** error) {
    TheHeldBus().Record("proxy ", name, " ", path, " ", interface, ", flags ", flags);
    return TheHeldBus().NewProxy(name, error);
}

GVariant* __wrap_g_dbus_connection_call_sync(GDBusConnection*, const gchar* destination,
                                             const gchar* path, const gchar* interface,
                                             const gchar* method, GVariant* parameters,
                                             const GVariantType* replyType, GDBusCallFlags flags,
                                             gint timeout, GCancellable*, GError** error) {
    if (TheHeldBus().records) {
        g_autofree char* given =
            parameters != nullptr ? g_variant_print(parameters, FALSE) : nullptr;
        g_autofree char* reply =
            replyType != nullptr ? g_variant_type_dup_string(replyType) : nullptr;
        TheHeldBus().Record("call ", destination, " ", path, " ", interface, " ", method, " ",
                            static_cast<const char*>(given), " -> ",
                            static_cast<const char*>(reply), ", flags ", flags, ", timeout ",
                            timeout);
    }
    return TheHeldBus().CallDaemon(method, parameters, error);
}

gboolean __wrap_g_dbus_connection_emit_signal(GDBusConnection*, const gchar* destination,
                                              const gchar*, const gchar*, const gchar*,
                                              GVariant* parameters, GError**) {
    TheHeldBus().Emit(destination, parameters);
    return TRUE;
}

// As the bus library's, consumes a reference to the invocation.
void __wrap_g_dbus_method_invocation_return_value(GDBusMethodInvocation* invocation,
                                                  GVariant* parameters) {
    TheHeldBus().Reply(parameters);
    g_object_unref(invocation);
}
}
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
