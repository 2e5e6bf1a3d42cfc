// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "launch/AppControlBus.h"

#include <chrono>
#include <string>

#include <gio/gio.h>

#include "Log.h"
#include "launch/Deadline.h"
#include "launch/LaunchProtocol.h"
#include "launch/SessionBus.h"

namespace applist::desktop {
namespace {

// Limit for each reply of the bus, because the viewer may be waiting for the caller.
constexpr int REPLY_TIMEOUT_MS = 1000;
constexpr const char* BUS_NAME = "org.freedesktop.DBus";
constexpr const char* BUS_PATH = "/org/freedesktop/DBus";

// Opens a private connection. The process' shared connection ends the process when the bus closes
// it. Returns null if the bus does not answer within the limit.
GDBusConnection* Connect() {
    if (!HasSessionBus()) {
        return nullptr;
    }
    const Deadline deadline{std::chrono::milliseconds(REPLY_TIMEOUT_MS)};
    g_autoptr(GError) error = nullptr;
    g_autofree char* address =
        g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SESSION, deadline.cancellable(), &error);
    GDBusConnection* bus = nullptr;
    if (address != nullptr) {
        constexpr auto flags =
            static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                              G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
        bus = g_dbus_connection_new_for_address_sync(address, flags, nullptr,
                                                     deadline.cancellable(), &error);
    }
    if (bus == nullptr) {
        LOG_ERROR("No session bus to launch over: [%d] %s", error->code, error->message);
    }
    return bus;
}

// Calls a method of the bus daemon and discards the content of the reply.
bool AskDaemon(GDBusConnection* bus, const char* interface, const char* method,
               GVariant* parameters, GError** error) {
    g_autoptr(GVariant) answer =
        g_dbus_connection_call_sync(bus, BUS_NAME, BUS_PATH, interface, method, parameters, nullptr,
                                    G_DBUS_CALL_FLAGS_NONE, REPLY_TIMEOUT_MS, nullptr, error);
    return answer != nullptr;
}

// Logs the failure of a bus call. After a timeout it returns UNKNOWN, so that the caller launches
// the program directly: the daemon drops the pending request when this connection closes. If the
// bus starts the program as well, the second instance forwards its request to the first.
BusLaunch Failed(const char* what, const std::string& appId, const GError* error) {
    if (g_error_matches(error, G_IO_ERROR, G_IO_ERROR_TIMED_OUT) != FALSE) {
        LOG_INFO("Timed out: %s %s over the bus", what, appId.c_str());
        return BusLaunch::UNKNOWN;
    }
    LOG_ERROR("Cannot %s %s over the bus: [%d] %s", what, appId.c_str(), error->code,
              error->message);
    return BusLaunch::FAILED;
}

// The start and the request are separate calls. The daemon drops a request that waits for a start
// if its sender disconnects, and the caller may exit right after the launch.
BusLaunch Start(GDBusConnection* bus, const std::string& appId) {
    g_autoptr(GError) error = nullptr;
    if (AskDaemon(bus, BUS_NAME, "StartServiceByName", g_variant_new("(su)", appId.c_str(), 0U),
                  &error)) {
        return BusLaunch::DELIVERED;
    }
    if (g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_SERVICE_UNKNOWN) != FALSE) {
        return BusLaunch::UNKNOWN;
    }
    return Failed("start", appId, error);
}

// The daemon handles the messages of a connection in order. Its reply to the Ping therefore proves
// that the request is in the application's queue.
BusLaunch Deliver(GDBusConnection* bus, const app_control_s& request) {
    g_autoptr(GError) error = nullptr;
    g_autoptr(GDBusMessage) message = ToMessage(request);
    if (g_dbus_connection_send_message(bus, message, G_DBUS_SEND_MESSAGE_FLAGS_NONE, nullptr,
                                       &error) != FALSE &&
        AskDaemon(bus, "org.freedesktop.DBus.Peer", "Ping", nullptr, &error)) {
        return BusLaunch::DELIVERED;
    }
    return Failed("reach", request.appId, error);
}

}  // namespace

BusLaunch LaunchOverBus(const app_control_s& request) {
    g_autoptr(GDBusConnection) bus = Connect();
    if (bus == nullptr) {
        return BusLaunch::UNKNOWN;
    }
    const BusLaunch started = Start(bus, request.appId);
    return started == BusLaunch::DELIVERED ? Deliver(bus, request) : started;
}

}  // namespace applist::desktop
