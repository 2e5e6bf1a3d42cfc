// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "launch/AppControlBus.h"

#include <string>

#include <gio/gio.h>

#include "Log.h"
#include "bus/SessionBus.h"
#include "launch/LaunchProtocol.h"

namespace applist::desktop {
namespace {

// The caller waits this long for an answer, because the viewer may be waiting for the caller.
constexpr int PATIENCE_MS = 1000;
constexpr const char* BUS_NAME = "org.freedesktop.DBus";
constexpr const char* BUS_PATH = "/org/freedesktop/DBus";

// A connection of our own: the process' shared one would end the process with the bus.
GDBusConnection* Connect() {
    if (!HasSessionBus()) {
        return nullptr;
    }
    g_autoptr(GError) error = nullptr;
    g_autofree char* address = g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SESSION, nullptr, &error);
    GDBusConnection* bus = nullptr;
    if (address != nullptr) {
        constexpr auto flags =
            static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                              G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
        bus = g_dbus_connection_new_for_address_sync(address, flags, nullptr, nullptr, &error);
    }
    if (bus == nullptr) {
        LOG_ERROR("No session bus to launch over: [%d] %s", error->code, error->message);
    }
    return bus;
}

// Calls the bus daemon itself and drops the answer's content.
bool AskDaemon(GDBusConnection* bus, const char* interface, const char* method,
               GVariant* parameters, GError** error) {
    g_autoptr(GVariant) answer =
        g_dbus_connection_call_sync(bus, BUS_NAME, BUS_PATH, interface, method, parameters, nullptr,
                                    G_DBUS_CALL_FLAGS_NONE, PATIENCE_MS, nullptr, error);
    return answer != nullptr;
}

// Logs why the bus has not done it. A start that takes long is left to the direct launch: the
// daemon drops a request whose sender has gone away, and two programs of one id sort out the
// request between them.
BusLaunch Failed(const char* what, const std::string& appId, const GError* error) {
    if (g_error_matches(error, G_IO_ERROR, G_IO_ERROR_TIMED_OUT) != FALSE) {
        LOG_INFO("%s %s over the bus takes too long", what, appId.c_str());
        return BusLaunch::UNKNOWN;
    }
    LOG_ERROR("Cannot %s %s over the bus: [%d] %s", what, appId.c_str(), error->code,
              error->message);
    return BusLaunch::FAILED;
}

// Starting comes apart from the request: the daemon drops a request that waits for a start when
// its sender goes away first, and a caller may end right after the launch.
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

GDBusMessage* ToMessage(const app_control_s& request) {
    GDBusMessage* message =
        g_dbus_message_new_method_call(request.appId.c_str(), ObjectPathOf(request.appId).c_str(),
                                       "org.freedesktop.Application", "ActivateAction");
    GVariant* parameters[] = {g_variant_new_variant(ToActionParameter(request))};
    g_dbus_message_set_body(
        message, g_variant_new("(s@av@a{sv})", LAUNCH_ACTION,
                               g_variant_new_array(G_VARIANT_TYPE_VARIANT, parameters, 1),
                               g_variant_new_array(G_VARIANT_TYPE("{sv}"), nullptr, 0)));
    g_dbus_message_set_flags(message, G_DBUS_MESSAGE_FLAGS_NO_REPLY_EXPECTED);
    return message;
}

// The daemon handles a connection's messages in order: its answer to a later question proves that
// the request stands in the application's queue.
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
