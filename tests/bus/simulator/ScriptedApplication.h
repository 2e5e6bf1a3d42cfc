// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "link/ChannelNames.h"
#include "link/Connection.h"

namespace applist::test {

/// An application that does only what the test calls. Has a separate bus connection and records the
/// middleware's announcements and signals.
class ScriptedApplication {
public:
    explicit ScriptedApplication(const std::string& address)
        : m_connection(std::move(*sim::OpenBus(address))),
          m_name(g_dbus_connection_get_unique_name(m_connection.get())) {
        Subscribe("org.freedesktop.DBus", "NameOwnerChanged");
        Subscribe(sim::names::INTERFACE, sim::names::SIGNAL);
    }
    ~ScriptedApplication() { Leave(); }
    ScriptedApplication(const ScriptedApplication&) = delete;
    ScriptedApplication& operator=(const ScriptedApplication&) = delete;
    ScriptedApplication(ScriptedApplication&&) = delete;
    ScriptedApplication& operator=(ScriptedApplication&&) = delete;

    const std::string& name() const { return m_name; }
    GDBusConnection* connection() const { return m_connection.get(); }

    void Announce(const char* suffix) {
        const auto announced =
            sim::AnnounceName(connection(), std::string(sim::names::SERVICE) + suffix);
        EXPECT_EQ(announced.error, "");
    }

    // Owns or releases a name without the other half of an announcement.
    void Ask(const char* method, GVariant* parameters) {
        const sim::GVariantPtr reply(g_dbus_connection_call_sync(
            connection(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
            method, parameters, nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
        EXPECT_TRUE(reply);
    }
    void Own(const std::string& name) {
        Ask("RequestName", g_variant_new("(su)", name.c_str(), 4));
    }
    void Release(const std::string& name) {
        Ask("ReleaseName", g_variant_new("(s)", name.c_str()));
    }

    void Notify(const std::string& destination, GVariant* content) {
        g_dbus_connection_emit_signal(connection(), destination.c_str(), sim::names::OBJECT_PATH,
                                      sim::names::INTERFACE, sim::names::SIGNAL, content, nullptr);
    }

    void Leave() {
        m_subscriptions.clear();
        if (m_connection) {
            g_dbus_connection_close_sync(connection(), nullptr, nullptr);
            m_connection.reset();
        }
    }

    std::vector<std::string> heard;       ///< Announcements by their suffix, and signals.
    std::string middleware;               ///< The sender of the last announcement.
    std::vector<std::string> announcers;  ///< The sender of each announcement.

private:
    void Subscribe(const char* interface, const char* member) {
        GDBusConnection* bus = connection();
        const unsigned id = g_dbus_connection_signal_subscribe(
            bus, nullptr, interface, member, nullptr, nullptr, G_DBUS_SIGNAL_FLAGS_NONE,
            [](GDBusConnection*, const char*, const char*, const char*, const char* name,
               GVariant* content,
               void* self) { static_cast<ScriptedApplication*>(self)->Hear(name, content); },
            this, nullptr);
        m_subscriptions.emplace_back([bus, id] { g_dbus_connection_signal_unsubscribe(bus, id); });
    }

    void Hear(const std::string& member, GVariant* content) {
        if (member == sim::names::SIGNAL) {
            const sim::GVariantPtr bytes(g_variant_get_child_value(content, 0));
            heard.push_back(std::string("signal ") + g_variant_get_bytestring(bytes.get()));
            return;
        }
        const char* name = nullptr;
        const char* oldOwner = nullptr;
        const char* newOwner = nullptr;
        g_variant_get(content, "(&s&s&s)", &name, &oldOwner, &newOwner);
        const std::string base = sim::names::CLIENT;
        if (std::string(name).starts_with(base) && *newOwner == '\0') {
            heard.push_back(name + base.size());
            middleware = oldOwner;
            announcers.emplace_back(oldOwner);
        }
    }

    sim::ConnectionPtr m_connection;
    std::string m_name;
    std::vector<sim::Registration> m_subscriptions;
};

}  // namespace applist::test
