// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "accessibility/ScreenReader.h"

#include <utility>

#include "CallbackGuard.h"
#include "Log.h"
#include "launch/SessionBus.h"

namespace applist::desktop {
namespace {

constexpr const char* SERVICE = "org.a11y.Bus";
constexpr const char* OBJECT = "/org/a11y/bus";
constexpr const char* INTERFACE = "org.a11y.Status";
constexpr const char* PROPERTY = "ScreenReaderEnabled";

// A cancelled call also completes here, when its ScreenReader may already be deleted.
void OnConnected(GObject*, GAsyncResult* result, gpointer reader) {
    g_autoptr(GError) error = nullptr;
    GDBusProxy* status = g_dbus_proxy_new_for_bus_finish(result, &error);
    if (g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED) != 0) {
        return;
    }
    if (error != nullptr) {
        LOG_INFO("Cannot query the screen-reader status: %s", error->message);
    }
    GuardCallback([&] { static_cast<ScreenReader*>(reader)->Connected(status); });
}

void OnChanged(GDBusProxy*, GVariant*, const gchar* const*, gpointer reader) {
    GuardCallback([reader] { static_cast<ScreenReader*>(reader)->Update(); });
}

void OnOwnerChanged(GDBusProxy*, GParamSpec*, gpointer reader) {
    GuardCallback([reader] { static_cast<ScreenReader*>(reader)->Update(); });
}

bool IsOn(GDBusProxy* status) {
    // The value is null while the service is not running, which counts as off.
    g_autoptr(GVariant) value = g_dbus_proxy_get_cached_property(status, PROPERTY);
    return value != nullptr && g_variant_is_of_type(value, G_VARIANT_TYPE_BOOLEAN) != 0 &&
           g_variant_get_boolean(value) != 0;
}

}  // namespace

ScreenReader::ScreenReader(Listener listener)
    : m_listener(std::move(listener)), m_connecting(g_cancellable_new()) {
    if (HasSessionBus()) {
        g_dbus_proxy_new_for_bus(G_BUS_TYPE_SESSION, G_DBUS_PROXY_FLAGS_DO_NOT_AUTO_START, nullptr,
                                 SERVICE, OBJECT, INTERFACE, m_connecting, OnConnected, this);
    }
}

ScreenReader::~ScreenReader() {
    // A pending call then completes as cancelled and does not use this object.
    g_cancellable_cancel(m_connecting);
    g_object_unref(m_connecting);
    if (m_status != nullptr) {
        // Other holders may keep the proxy alive, so its signals are disconnected first.
        g_signal_handlers_disconnect_by_data(m_status, this);
        g_object_unref(m_status);
    }
}

void ScreenReader::Connected(GDBusProxy* status) {
    m_status = status;
    if (m_status == nullptr) {
        return;
    }
    // The list must stay open if the session bus disconnects.
    g_dbus_connection_set_exit_on_close(g_dbus_proxy_get_connection(m_status), FALSE);
    g_signal_connect(m_status, "g-properties-changed", G_CALLBACK(OnChanged), this);
    g_signal_connect(m_status, "notify::g-name-owner", G_CALLBACK(OnOwnerChanged), this);
    Update();
}

void ScreenReader::Update() {
    const bool on = IsOn(m_status);
    // Both signals may report the same change; the listener is called once.
    if (std::exchange(m_on, on) != on) {
        m_listener(on);
    }
}

}  // namespace applist::desktop
