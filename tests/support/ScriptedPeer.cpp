// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "support/ScriptedPeer.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <iterator>

#include <gtest/gtest.h>

#include "support/GlibWait.h"

namespace applist::test {
namespace {

// Not taken from the product, because the partner would repeat a mistake made there.
constexpr const char* PREFIX = "org.vantu.JavaMW.";
constexpr const char* INTERFACE = "org.vantu.javamw.DbusCommunication";

std::vector<char> Unwrap(GVariant* tuple) {
    if (!g_variant_is_of_type(tuple, G_VARIANT_TYPE("(ay)"))) {
        ADD_FAILURE() << "not a payload: " << g_variant_get_type_string(tuple);
        return {};
    }
    g_autoptr(GVariant) array = g_variant_get_child_value(tuple, 0);
    gsize size = 0;
    const auto* bytes = static_cast<const char*>(g_variant_get_fixed_array(array, &size, 1));
    return {bytes, bytes + size};
}

void DieOf(GError* error) {
    if (error != nullptr) {
        std::cerr << "scripted peer: " << error->message << std::endl;
        std::abort();
    }
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const PeerEvent& event) {
    static constexpr const char* KINDS[] = {"ANNOUNCEMENT", "SIGNAL", "REPLY", "FAILURE"};
    return out << KINDS[event.kind] << " " << event.text << " from '" << event.sender << "' "
               << testing::PrintToString(std::string(event.bytes.begin(), event.bytes.end()));
}

ScriptedPeer::ScriptedPeer(const std::string& address, const std::string& channel, Role role)
    : m_base(PREFIX + channel) {
    GError* error = nullptr;
    m_connection = g_dbus_connection_new_for_address_sync(
        address.c_str(),
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, nullptr, &error);
    DieOf(error);
    m_uniqueName = g_dbus_connection_get_unique_name(m_connection);
    const std::string other = m_base + (role == MIDDLEWARE ? "_SERVICE" : "_CLIENT");
    for (const char* ending : {"_SYN", "_SYN_ACK", "_ACK"}) {
        ListenTo(other + ending);
    }
    m_subscriptions.push_back(g_dbus_connection_signal_subscribe(
        m_connection, nullptr, INTERFACE, nullptr, nullptr, nullptr, G_DBUS_SIGNAL_FLAGS_NONE,
        OnSignal, this, nullptr));
    // Announcements from now on must be received.
    CallDaemon("GetId", nullptr);
}

ScriptedPeer::~ScriptedPeer() {
    Leave();
    g_object_unref(m_connection);
}

void ScriptedPeer::Leave() {
    for (const unsigned id : m_subscriptions) {
        g_dbus_connection_signal_unsubscribe(m_connection, id);
    }
    m_subscriptions.clear();
    // The callbacks of calls that are still pending use this object.
    g_dbus_connection_close_sync(m_connection, nullptr, nullptr);
    EXPECT_TRUE(RunUntil([this] { return m_pending == 0; }));
}

void ScriptedPeer::ListenTo(const std::string& name) {
    m_subscriptions.push_back(g_dbus_connection_signal_subscribe(
        m_connection, "org.freedesktop.DBus", "org.freedesktop.DBus", "NameOwnerChanged",
        "/org/freedesktop/DBus", name.c_str(), G_DBUS_SIGNAL_FLAGS_NONE, OnNameOwnerChanged, this,
        nullptr));
}

void ScriptedPeer::CallDaemon(const char* method, GVariant* parameters) {
    GError* error = nullptr;
    GVariant* reply = g_dbus_connection_call_sync(
        m_connection, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
        method, parameters, nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, &error);
    DieOf(error);
    g_variant_unref(reply);
}

void ScriptedPeer::Own(const std::string& ending) {
    CallDaemon("RequestName", g_variant_new("(su)", (m_base + ending).c_str(), 4U));
}

void ScriptedPeer::Release(const std::string& ending) {
    CallDaemon("ReleaseName", g_variant_new("(s)", (m_base + ending).c_str()));
}

void ScriptedPeer::Announce(const std::string& ending) {
    Own(ending);
    Release(ending);
}

void ScriptedPeer::Send(const std::string& destination, const std::string& path,
                        const std::vector<char>& bytes) {
    Call(destination, path, INTERFACE, "Send", Payload(bytes));
}

std::vector<char> ScriptedPeer::Ask(const std::string& destination,
                                    const std::vector<char>& bytes) {
    const size_t before = m_events.size();
    Send(destination, "/org/vantu/javamw/CommunicationChannel/Applist", bytes);
    const auto reply = [&] {
        return std::find_if(m_events.begin() + static_cast<std::ptrdiff_t>(before), m_events.end(),
                            [](const PeerEvent& event) { return event.kind >= PeerEvent::REPLY; });
    };
    if (!RunUntil([&] { return reply() != m_events.end(); })) {
        ADD_FAILURE() << "no reply from " << destination;
        return {};
    }
    return reply()->bytes;
}

void ScriptedPeer::Call(const std::string& destination, const std::string& path,
                        const std::string& interface, const std::string& member,
                        GVariant* arguments) {
    ++m_pending;
    g_dbus_connection_call(m_connection, destination.c_str(), path.c_str(), interface.c_str(),
                           member.c_str(), arguments, G_VARIANT_TYPE("(ay)"),
                           G_DBUS_CALL_FLAGS_NONE, G_MAXINT, nullptr, OnReply, this);
}

void ScriptedPeer::Emit(const std::string& destination, const std::string& path,
                        const std::string& member, GVariant* content) {
    GError* error = nullptr;
    g_dbus_connection_emit_signal(m_connection, destination.c_str(), path.c_str(), INTERFACE,
                                  member.c_str(), content, &error);
    DieOf(error);
}

void ScriptedPeer::Notify(const std::string& destination, const std::string& path,
                          const std::vector<char>& bytes) {
    Emit(destination, path, "SendSignal", Payload(bytes));
}

std::vector<PeerEvent> ScriptedPeer::Traffic() const {
    std::vector<PeerEvent> traffic;
    std::copy_if(m_events.begin(), m_events.end(), std::back_inserter(traffic),
                 [](const PeerEvent& event) { return event.kind != PeerEvent::ANNOUNCEMENT; });
    return traffic;
}

std::vector<std::string> ScriptedPeer::Heard() const {
    std::vector<std::string> heard;
    for (const PeerEvent& event : m_events) {
        if (event.kind == PeerEvent::ANNOUNCEMENT) {
            heard.push_back(event.text);
        } else if (event.kind == PeerEvent::SIGNAL) {
            heard.push_back("signal " + std::string(event.bytes.begin(), event.bytes.end()));
        }
    }
    return heard;
}

void ScriptedPeer::Forget() {
    m_events.clear();
    m_awaited = 0;
}

bool ScriptedPeer::AwaitAnnouncement(const std::string& ending) {
    return RunUntil([&] {
        while (m_awaited < m_events.size()) {
            const PeerEvent& event = m_events[m_awaited++];
            if (event.kind == PeerEvent::ANNOUNCEMENT && event.text == ending) {
                return true;
            }
        }
        return false;
    });
}

bool ScriptedPeer::AwaitTraffic(size_t count) {
    return RunUntil([&] { return Traffic().size() >= count; });
}

bool ScriptedPeer::AwaitHeard(size_t count) {
    return RunUntil([&] { return Heard().size() >= count; });
}

void ScriptedPeer::OnNameOwnerChanged(GDBusConnection*, const char*, const char*, const char*,
                                      const char*, GVariant* parameters, void* peer) {
    const char* name = nullptr;
    const char* oldOwner = nullptr;
    const char* newOwner = nullptr;
    g_variant_get(parameters, "(&s&s&s)", &name, &oldOwner, &newOwner);
    if (*newOwner == '\0') {
        auto& self = *static_cast<ScriptedPeer*>(peer);
        self.m_announcer = oldOwner;
        self.m_events.push_back(
            {PeerEvent::ANNOUNCEMENT, std::string(name).substr(self.m_base.size()), oldOwner, {}});
    }
}

void ScriptedPeer::OnSignal(GDBusConnection*, const char* sender, const char* path, const char*,
                            const char* member, GVariant* parameters, void* peer) {
    static_cast<ScriptedPeer*>(peer)->m_events.push_back(
        {PeerEvent::SIGNAL, std::string(member) + " " + path, sender, Unwrap(parameters)});
}

void ScriptedPeer::OnReply(GObject* connection, GAsyncResult* result, void* peer) {
    g_autoptr(GError) error = nullptr;
    g_autoptr(GVariant) reply =
        g_dbus_connection_call_finish(G_DBUS_CONNECTION(connection), result, &error);
    auto& self = *static_cast<ScriptedPeer*>(peer);
    --self.m_pending;
    if (reply != nullptr) {
        self.m_events.push_back({PeerEvent::REPLY, "", "", Unwrap(reply)});
        return;
    }
    g_autofree char* name = g_dbus_error_get_remote_error(error);
    self.m_events.push_back({PeerEvent::FAILURE, name != nullptr ? name : error->message, "", {}});
}

}  // namespace applist::test
