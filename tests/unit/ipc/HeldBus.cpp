// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "unit/ipc/HeldBus.h"

#include <algorithm>
#include <utility>

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

guint HeldBus::Subscribe(const char* sender, const char* name, GDBusSignalCallback callback,
                         void* data) {
    m_subscriptions[++m_lastSubscription] = {Text(sender), Text(name), callback, data};
    return m_lastSubscription;
}

guint HeldBus::Watch(const char* name, GBusNameVanishedCallback callback, void* data) {
    m_watches[++m_lastWatch] = {Text(name), callback, data};
    return m_lastWatch;
}

GVariant* HeldBus::Call(const std::string& method, GVariant* parameters) {
    constexpr uint32_t owner = 1;
    constexpr uint32_t exists = 3;
    if (method != "RequestName") {
        return g_variant_ref_sink(g_variant_new("(u)", owner));
    }
    const bool refuse = std::exchange(m_refuse, false);
    if (!refuse) {
        const char* name = nullptr;
        g_variant_get(parameters, "(&su)", &name, nullptr);
        m_ownedNames.emplace_back(name);
    }
    return g_variant_ref_sink(g_variant_new("(u)", refuse ? exists : owner));
}

GDBusProxy* HeldBus::NewProxy(const char* name) {
    m_proxies.insert(name);
    // The transport only stores and releases it.
    auto* const object = static_cast<GObject*>(g_object_new(G_TYPE_OBJECT, nullptr));
    g_object_weak_ref(object, OnProxyReleased, new std::string(name));
    return reinterpret_cast<GDBusProxy*>(object);
}

void HeldBus::ProxyReleased(const std::string& name) {
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

GDBusConnection* __wrap_g_bus_get_sync(GBusType, GCancellable*, GError**) {
    return static_cast<GDBusConnection*>(g_object_ref(Connection()));
}

const gchar* __wrap_g_dbus_connection_get_unique_name(GDBusConnection*) {
    return HeldBus::SELF;
}

gboolean __wrap_g_dbus_connection_is_closed(GDBusConnection*) {
    return FALSE;
}

guint __wrap_g_dbus_connection_register_object(GDBusConnection*, const gchar*, GDBusInterfaceInfo*,
                                               const GDBusInterfaceVTable*, gpointer,
                                               GDestroyNotify, GError**) {
    return 1;
}

guint __wrap_g_dbus_connection_signal_subscribe(GDBusConnection*, const gchar* sender, const gchar*,
                                                const gchar*, const gchar*, const gchar* name,
                                                GDBusSignalFlags, GDBusSignalCallback callback,
                                                gpointer data, GDestroyNotify) {
    return TheHeldBus().Subscribe(sender, name, callback, data);
}

void __wrap_g_dbus_connection_signal_unsubscribe(GDBusConnection*, guint id) {
    TheHeldBus().Unsubscribe(id);
}

guint __wrap_g_bus_watch_name_on_connection(GDBusConnection*, const gchar* name,
                                            GBusNameWatcherFlags, GBusNameAppearedCallback,
                                            GBusNameVanishedCallback vanished, gpointer data,
                                            GDestroyNotify) {
    return TheHeldBus().Watch(name, vanished, data);
}

void __wrap_g_bus_unwatch_name(guint id) {
    TheHeldBus().Unwatch(id);
}

GDBusProxy* __wrap_g_dbus_proxy_new_sync(GDBusConnection*, GDBusProxyFlags, GDBusInterfaceInfo*,
                                         const gchar* name, const gchar*, const gchar*,
                                         GCancellable*, GError**) {
    return TheHeldBus().NewProxy(name);
}

GVariant* __wrap_g_dbus_connection_call_sync(GDBusConnection*, const gchar*, const gchar*,
                                             const gchar*, const gchar* method,
                                             GVariant* parameters, const GVariantType*,
                                             GDBusCallFlags, gint, GCancellable*, GError**) {
    return TheHeldBus().Call(method, parameters);
}

gboolean __wrap_g_dbus_connection_emit_signal(GDBusConnection*, const gchar* destination,
                                              const gchar*, const gchar*, const gchar*,
                                              GVariant* parameters, GError**) {
    g_variant_unref(g_variant_ref_sink(parameters));
    TheHeldBus().Emit(destination);
    return TRUE;
}
}
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
