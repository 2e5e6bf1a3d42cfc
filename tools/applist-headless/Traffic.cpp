// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "Traffic.h"

#include <algorithm>
#include <mutex>
#include <string_view>

#include "CallbackGuard.h"
#include "ipc/javamw-dbus-local.h"

namespace applist::headless {

struct Traffic::Shared {
    std::function<void()> onChange;
    std::mutex mutex;
    Counts counts;

    void Take(GDBusMessage* message, bool incoming);
};

namespace {

// The event that completes a handshake, as the application sends it.
constexpr std::string_view LOCAL_CREATED("\4\0\0\0", 4);

bool IsLocalCreated(GDBusMessage* message) {
    GVariant* body = g_dbus_message_get_body(message);
    if (body == nullptr || !g_variant_is_of_type(body, G_VARIANT_TYPE("(ay)"))) {
        return false;
    }
    g_autoptr(GVariant) bytes = g_variant_get_child_value(body, 0);
    gsize size = 0;
    const auto* data =
        static_cast<const char*>(g_variant_get_fixed_array(bytes, &size, sizeof(char)));
    return std::string_view(data, size) == LOCAL_CREATED;
}

/// Returns the unique name that has left the bus, or an empty string for any other message.
std::string LostName(GDBusMessage* message) {
    GVariant* body = g_dbus_message_get_body(message);
    const char* name = "";
    const char* oldOwner = "";
    const char* newOwner = "";
    if (body != nullptr && g_variant_is_of_type(body, G_VARIANT_TYPE("(sss)"))) {
        g_variant_get(body, "(&s&s&s)", &name, &oldOwner, &newOwner);
    }
    return *newOwner == '\0' && *name == ':' ? name : "";
}

bool Is(GDBusMessage* message, GDBusMessageType type, const char* member) {
    return g_dbus_message_get_message_type(message) == type &&
           g_strcmp0(g_dbus_message_get_member(message), member) == 0;
}

}  // namespace

void Traffic::Shared::Take(GDBusMessage* message, bool incoming) {
    const std::lock_guard lock(mutex);
    auto& partners = counts.partners;
    if (incoming) {
        if (Is(message, G_DBUS_MESSAGE_TYPE_METHOD_CALL, JavaMWDbusLocal::JAVAMW_DBUS_OBJ_METHOD)) {
            ++counts.calls;
        } else if (Is(message, G_DBUS_MESSAGE_TYPE_SIGNAL, "NameOwnerChanged")) {
            std::erase(partners, LostName(message));
        }
        return;
    }
    if (Is(message, G_DBUS_MESSAGE_TYPE_SIGNAL, JavaMWDbusLocal::JAVAMW_DBUS_SIG_NAME)) {
        ++counts.events;
        const std::string partner = g_dbus_message_get_destination(message);
        if (IsLocalCreated(message) &&
            std::find(partners.begin(), partners.end(), partner) == partners.end()) {
            partners.push_back(partner);
        }
    }
}

Traffic::Traffic(GDBusConnection* connection, std::function<void()> onChange)
    : m_connection(connection), m_shared(std::make_shared<Shared>()) {
    m_shared->onChange = std::move(onChange);
    m_filter = g_dbus_connection_add_filter(
        m_connection, OnMessage, new std::shared_ptr<Shared>(m_shared),
        [](void* data) { delete static_cast<std::shared_ptr<Shared>*>(data); });
}

Traffic::~Traffic() {
    g_dbus_connection_remove_filter(m_connection, m_filter);
}

Traffic::Counts Traffic::Read() const {
    const std::lock_guard lock(m_shared->mutex);
    return m_shared->counts;
}

GDBusMessage* Traffic::OnMessage(GDBusConnection* /*connection*/, GDBusMessage* message,
                                 int incoming, void* data) {
    GuardCallback([&] {
        const auto& shared = *static_cast<std::shared_ptr<Shared>*>(data);
        shared->Take(message, incoming != FALSE);
        // Announced after every message, because an "await" may wait for its effect on the list.
        g_idle_add_full(
            G_PRIORITY_DEFAULT_IDLE,
            [](void* announced) {
                GuardCallback(
                    [&] { (*static_cast<std::shared_ptr<Shared>*>(announced))->onChange(); });
                return G_SOURCE_REMOVE;
            },
            new std::shared_ptr<Shared>(shared),
            [](void* announced) { delete static_cast<std::shared_ptr<Shared>*>(announced); });
    });
    return message;
}

}  // namespace applist::headless
