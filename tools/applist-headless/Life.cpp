// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "Life.h"

#include <utility>

#include "app.h"
#include "link/Connection.h"

namespace applist::headless {
namespace {

// For ui_app_exit(), which does not have an argument.
Life* g_running = nullptr;

}  // namespace

void Life::Release::operator()(GDBusConnection* connection) const {
    g_dbus_connection_close_sync(connection, nullptr, nullptr);
    g_object_unref(connection);
}

std::unique_ptr<Life> Life::Start(const OnChange& onChange, std::string& problem) {
    g_autoptr(GError) error = nullptr;
    Connection connection(g_bus_get_sync(G_BUS_TYPE_SYSTEM, nullptr, &error));
    if (!connection) {
        problem = std::string("cannot connect to the system bus: ") + error->message;
        return nullptr;
    }
    // The session reports a lost bus. By default the bus library would end the process by SIGTERM.
    g_dbus_connection_set_exit_on_close(connection.get(), FALSE);
    return std::unique_ptr<Life>(new Life(std::move(connection), onChange));
}

Life::Life(Connection connection, OnChange onChange)
    : m_onChange(std::move(onChange)),
      m_connection(std::move(connection)),
      m_whenClosed(sim::WhenClosed(m_connection.get(), m_onChange)),
      m_traffic(m_connection.get(), m_onChange) {
    g_running = this;
}

Life::~Life() {
    g_running = nullptr;
    // Closing the connection at the end of a life is not a loss of the bus.
    m_whenClosed.Release();
}

std::string Life::Name() const {
    return g_dbus_connection_get_unique_name(m_connection.get());
}

void Life::AskForEnd() {
    m_endAsked = true;
    m_onChange();
}

bool Life::LostBus() const {
    return g_dbus_connection_is_closed(m_connection.get()) != FALSE;
}

void Life::Flush() {
    g_dbus_connection_flush_sync(m_connection.get(), nullptr, nullptr);
}

void Life::Disconnect() {
    g_dbus_connection_close_sync(m_connection.get(), nullptr, nullptr);
}

}  // namespace applist::headless

extern "C" void ui_app_exit(void) {
    if (applist::headless::g_running != nullptr) {
        applist::headless::g_running->AskForEnd();
    }
}
