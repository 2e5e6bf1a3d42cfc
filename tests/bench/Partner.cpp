// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "bench/Partner.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace applist::bench {
namespace {

constexpr const char* DAEMON = "org.freedesktop.DBus";
constexpr const char* CHANNEL = "/org/vantu/javamw/CommunicationChannel/Applist";
constexpr const char* INTERFACE = "org.vantu.javamw.DbusCommunication";
constexpr int PATIENCE_MS = 60'000;

void DieOf(const GError* error) {
    if (error != nullptr) {
        std::fprintf(stderr, "Partner: %s\n", error->message);
        std::exit(1);
    }
}

GVariant* Wrap(const std::vector<char>& bytes) {
    GVariant* array = g_variant_new_fixed_array(G_VARIANT_TYPE_BYTE, bytes.data(), bytes.size(), 1);
    return g_variant_new("(@ay)", array);
}

}  // namespace

Partner::Partner(const std::string& address) {
    g_autoptr(GError) error = nullptr;
    m_connection = g_dbus_connection_new_for_address_sync(
        address.c_str(),
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, nullptr, &error);
    DieOf(error);
    m_subscriptions[0] = g_dbus_connection_signal_subscribe(
        m_connection, nullptr, INTERFACE, "SendSignal", nullptr, nullptr, G_DBUS_SIGNAL_FLAGS_NONE,
        cb_Signal, this, nullptr);
    m_subscriptions[1] =
        g_dbus_connection_signal_subscribe(m_connection, DAEMON, DAEMON, "NameOwnerChanged",
                                           nullptr, "org.vantu.JavaMW.Applist_SERVICE_SYN",
                                           G_DBUS_SIGNAL_FLAGS_NONE, cb_Announced, this, nullptr);
    // Announcements from now on are received.
    CallDaemon("GetId", nullptr);
}

Partner::~Partner() {
    for (const unsigned subscription : m_subscriptions) {
        g_dbus_connection_signal_unsubscribe(m_connection, subscription);
    }
    g_dbus_connection_close_sync(m_connection, nullptr, nullptr);
    g_object_unref(m_connection);
}

void Partner::CallDaemon(const char* method, GVariant* parameters) {
    g_autoptr(GError) error = nullptr;
    g_autoptr(GVariant) reply = g_dbus_connection_call_sync(
        m_connection, DAEMON, "/org/freedesktop/DBus", DAEMON, method, parameters, nullptr,
        G_DBUS_CALL_FLAGS_NONE, PATIENCE_MS, nullptr, &error);
    DieOf(error);
}

void Partner::Own(const std::string& ending) {
    const std::string name = "org.vantu.JavaMW.Applist" + ending;
    CallDaemon("RequestName", g_variant_new("(su)", name.c_str(), 4U));
    CallDaemon("ReleaseName", g_variant_new("(s)", name.c_str()));
}

void Partner::Announce() {
    Own("_CLIENT_SYN");
    Own("_CLIENT_ACK");
}

std::string Partner::AwaitList() {
    while (m_list.empty()) {
        g_main_context_iteration(nullptr, TRUE);
    }
    return std::exchange(m_list, {});
}

std::vector<char> Partner::Send(const std::string& destination, const std::vector<char>& bytes) {
    g_autoptr(GError) error = nullptr;
    g_autoptr(GVariant) reply = g_dbus_connection_call_sync(
        m_connection, destination.c_str(), CHANNEL, INTERFACE, "Send", Wrap(bytes),
        G_VARIANT_TYPE("(ay)"), G_DBUS_CALL_FLAGS_NONE, PATIENCE_MS, nullptr, &error);
    DieOf(error);
    g_autoptr(GVariant) array = g_variant_get_child_value(reply, 0);
    gsize size = 0;
    const auto* answer = static_cast<const char*>(g_variant_get_fixed_array(array, &size, 1));
    return {answer, answer + size};
}

void Partner::SendWithoutWaiting(const std::string& destination, const std::vector<char>& bytes) {
    g_dbus_connection_call(m_connection, destination.c_str(), CHANNEL, INTERFACE, "Send",
                           Wrap(bytes), nullptr, G_DBUS_CALL_FLAGS_NONE, PATIENCE_MS, nullptr,
                           nullptr, nullptr);
}

void Partner::AwaitSignals(size_t count) {
    while (m_signals < count) {
        g_main_context_iteration(nullptr, TRUE);
    }
    m_signals = 0;
}

void Partner::cb_Signal(GDBusConnection* /*connection*/, const char* /*sender*/,
                        const char* /*path*/, const char* /*interface*/, const char* /*member*/,
                        GVariant* /*parameters*/, void* partner) {
    ++static_cast<Partner*>(partner)->m_signals;
}

void Partner::cb_Announced(GDBusConnection* /*connection*/, const char* /*sender*/,
                           const char* /*path*/, const char* /*interface*/, const char* /*member*/,
                           GVariant* parameters, void* partner) {
    const char* owner = nullptr;
    const char* next = nullptr;
    g_variant_get(parameters, "(&s&s&s)", nullptr, &owner, &next);
    if (*next == '\0') {
        static_cast<Partner*>(partner)->m_list = owner;
    }
}

std::vector<char> Frame(std::vector<char> content, int function) {
    for (int shift = 0; shift < 32; shift += 8) {
        content.push_back(static_cast<char>((function >> shift) & 0xFF));
    }
    return content;
}

}  // namespace applist::bench
