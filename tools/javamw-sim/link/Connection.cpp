// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "link/Connection.h"

#include <utility>

namespace applist::sim {

// A fixed array is about a hundred times as fast as a variant for each byte.
GVariant* ToVariant(const Bytes& bytes) {
    return g_variant_new("(@ay)", g_variant_new_fixed_array(G_VARIANT_TYPE_BYTE, bytes.data(),
                                                            bytes.size(), sizeof(char)));
}

bool HoldsBytes(GVariant* parameters) {
    return g_variant_is_of_type(parameters, G_VARIANT_TYPE("(ay)")) != FALSE;
}

Bytes FromVariant(GVariant* parameters) {
    const GVariantPtr array(g_variant_get_child_value(parameters, 0));
    size_t size = 0;
    const auto* data =
        // The array belongs to the variant, so the bytes are copied before it is released.
        static_cast<const char*>(g_variant_get_fixed_array(array.get(), &size, sizeof(char)));
    return {data, data + size};
}

Result<ConnectionPtr> OpenBus(const std::string& address) {
    GError* error = nullptr;
    g_autofree char* system =
        address.empty() ? g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SYSTEM, nullptr, &error)
                        : nullptr;
    if (error != nullptr) {
        return Result<ConnectionPtr>::Failure(TakeMessage(error));
    }
    const std::string resolved = system != nullptr ? system : address;
    // A private connection, because its user closes it. Closing a shared one would affect its other
    // users.
    const auto flags =
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    ConnectionPtr connection(
        g_dbus_connection_new_for_address_sync(resolved.c_str(), flags, nullptr, nullptr, &error));
    if (!connection) {
        return Result<ConnectionPtr>::Failure(resolved + ": " + TakeMessage(error));
    }
    return connection;
}

// The timeout -1 is the default of GIO.
GVariantPtr CallDaemon(GDBusConnection* connection, const char* interface, const char* method,
                       GVariant* parameters, const char* replyType, GError** error) {
    const GVariantType* type = replyType != nullptr ? G_VARIANT_TYPE(replyType) : nullptr;
    return GVariantPtr(g_dbus_connection_call_sync(connection, DAEMON, DAEMON_PATH, interface,
                                                   method, parameters, type, G_DBUS_CALL_FLAGS_NONE,
                                                   -1, nullptr, error));
}

SignalMatch OwnerChangesOf(const char* name, bool anyBelow) {
    return {DAEMON, DAEMON, "NameOwnerChanged", DAEMON_PATH, name, anyBelow};
}

std::optional<OwnerChange> ReadOwnerChange(GVariant* parameters) {
    if (!g_variant_is_of_type(parameters, G_VARIANT_TYPE("(sss)"))) {
        return std::nullopt;
    }
    // The strings belong to the parameters and are copied.
    const char* name = nullptr;
    const char* oldOwner = nullptr;
    const char* newOwner = nullptr;
    g_variant_get(parameters, "(&s&s&s)", &name, &oldOwner, &newOwner);
    return OwnerChange{name, oldOwner, newOwner};
}

Registration Subscribe(
    GDBusConnection* connection, const SignalMatch& match,
    std::function<void(const std::string& sender, GVariant* parameters)> action) {
    using Action = std::function<void(const std::string&, GVariant*)>;
    const unsigned id = g_dbus_connection_signal_subscribe(
        connection, match.sender, match.interface, match.member, match.path, match.argument,
        match.anyBelow ? G_DBUS_SIGNAL_FLAGS_MATCH_ARG0_NAMESPACE : G_DBUS_SIGNAL_FLAGS_NONE,
        [](GDBusConnection*, const char* sender, const char*, const char*, const char*,
           GVariant* parameters,
           void* data) noexcept { (*static_cast<Action*>(data))(sender, parameters); },
        // GIO owns the action and deletes it after its last call.
        new Action(std::move(action)), [](void* data) { delete static_cast<Action*>(data); });
    return Registration([connection, id] { g_dbus_connection_signal_unsubscribe(connection, id); });
}

Registration WhenClosed(GDBusConnection* connection, std::function<void()> action) {
    using Action = std::function<void()>;
    const auto run = [](GDBusConnection*, int, GError*, void* data) noexcept {
        (*static_cast<Action*>(data))();
    };
    const auto forget = [](void* data, GClosure*) { delete static_cast<Action*>(data); };
    const unsigned long id = g_signal_connect_data(
        connection, "closed",
        G_CALLBACK(static_cast<void (*)(GDBusConnection*, int, GError*, void*)>(run)),
        new Action(std::move(action)), forget, G_CONNECT_DEFAULT);
    return Registration([connection, id] { g_signal_handler_disconnect(connection, id); });
}

}  // namespace applist::sim
