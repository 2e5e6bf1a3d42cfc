// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "launch/SingleInstance.h"

#include <utility>

#include "CallbackGuard.h"
#include "launch/LaunchProtocol.h"
#include "launch/SessionBus.h"

namespace applist::desktop {
namespace {

// Time limit for the bus or another instance: long enough if they are busy starting, short enough
// for a waiting viewer.
constexpr std::chrono::seconds REPLY_TIMEOUT{3};

// Calls the bus daemon.
GVariant* AskDaemon(GDBusConnection* bus, const char* interface, const char* method,
                    GVariant* parameters, GError** error) {
    return g_dbus_connection_call_sync(
        bus, "org.freedesktop.DBus", "/org/freedesktop/DBus", interface, method, parameters,
        nullptr, G_DBUS_CALL_FLAGS_NONE,
        std::chrono::duration_cast<std::chrono::duration<int, std::milli>>(REPLY_TIMEOUT).count(),
        nullptr, error);
}

// Returns true once the bus daemon has received all messages sent on the connection: it handles
// messages in order, so it replies to a Ping only after them. Returns false after REPLY_TIMEOUT.
// g_dbus_connection_flush_sync() would wait forever for a hanging daemon.
bool Reaches(GDBusConnection* bus, GError** error) {
    g_autoptr(GVariant) answer =
        AskDaemon(bus, "org.freedesktop.DBus.Peer", "Ping", nullptr, error);
    return answer != nullptr;
}

// The owner can be this connection, if the daemon assigned the id after the registration failed.
bool BelongsToAnother(GDBusConnection* bus, const std::string& applicationId) {
    g_autoptr(GVariant) answer = AskDaemon(bus, "org.freedesktop.DBus", "GetNameOwner",
                                           g_variant_new("(s)", applicationId.c_str()), nullptr);
    if (answer == nullptr || g_variant_is_of_type(answer, G_VARIANT_TYPE("(s)")) == FALSE) {
        return false;
    }
    const char* owner = nullptr;
    g_variant_get(answer, "(&s)", &owner);
    return g_strcmp0(owner, g_dbus_connection_get_unique_name(bus)) != 0;
}

void OnActivate(GApplication*, gpointer self) {
    GuardCallback([self] { static_cast<SingleInstance*>(self)->Activated(); });
}

void OnLaunchAction(GSimpleAction*, GVariant* values, gpointer self) {
    GuardCallback([&] { static_cast<SingleInstance*>(self)->LaunchAction(values); });
}

}  // namespace

SingleInstance::SingleInstance(std::string applicationId, Receiver receiver)
    : m_applicationId(std::move(applicationId)), m_receiver(std::move(receiver)) {
    if (m_applicationId.empty()) {
        LOG_ERROR(
            "The program's name is not a valid application id; other instances are not detected");
    } else if (!HasSessionBus()) {
        LOG_INFO("No session bus; %s does not detect other instances", m_applicationId.c_str());
    } else {
        Register();
    }
}

SingleInstance::~SingleInstance() {
    if (m_application) {
        g_signal_handlers_disconnect_by_data(m_application.get(), this);
    }
    if (m_role == Role::First) {
        m_application.reset();
        Reaches(m_bus.get(), nullptr);
    }
}

// Keeps the application object, because the caller may be one of its signal handlers.
void SingleInstance::Release() {
    if (m_role == Role::First) {
        g_dbus_connection_call(m_bus.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus",
                               "org.freedesktop.DBus", "ReleaseName",
                               g_variant_new("(s)", m_applicationId.c_str()), nullptr,
                               G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr, nullptr);
    }
}

void SingleInstance::Register() {
    const Deadline deadline(REPLY_TIMEOUT);
    g_autoptr(GError) error = nullptr;
    m_bus.reset(g_bus_get_sync(G_BUS_TYPE_SESSION, deadline.cancellable(), &error));
    if (m_bus == nullptr) {
        LOG_ERROR("Cannot connect to the session bus; %s does not detect other instances: [%d] %s",
                  m_applicationId.c_str(), error->code, error->message);
        return;
    }
    // The list must stay open if the session bus disconnects.
    g_dbus_connection_set_exit_on_close(m_bus.get(), FALSE);
    m_application.reset(g_application_new(m_applicationId.c_str(), G_APPLICATION_DEFAULT_FLAGS));
    AcceptRequests();
    if (g_application_register(m_application.get(), deadline.cancellable(), &error) != FALSE) {
        const bool later = g_application_get_is_remote(m_application.get()) != FALSE;
        m_role = later ? Role::Later : Role::First;
    } else if (BelongsToAnother(m_bus.get(), m_applicationId)) {
        // GIO asks the first instance for its actions, and that instance did not reply in time.
        m_role = Role::Later;
    } else {
        LOG_ERROR(
            "%s cannot register on the session bus and does not detect other instances: [%d] %s",
            m_applicationId.c_str(), error->code, error->message);
    }
}

void SingleInstance::AcceptRequests() {
    g_signal_connect(m_application.get(), "activate", G_CALLBACK(OnActivate), this);
    GSimpleAction* launch = g_simple_action_new(LAUNCH_ACTION, G_VARIANT_TYPE(LAUNCH_ACTION_TYPE));
    g_signal_connect(launch, "activate", G_CALLBACK(OnLaunchAction), this);
    g_action_map_add_action(G_ACTION_MAP(m_application.get()), G_ACTION(launch));
    g_object_unref(launch);
}

bool SingleInstance::HandOver(const app_control_s& request) {
    g_autoptr(GError) error = nullptr;
    g_autoptr(GDBusMessage) message = ToMessage(request);
    if (g_dbus_connection_send_message(m_bus.get(), message, G_DBUS_SEND_MESSAGE_FLAGS_NONE,
                                       nullptr, &error) != FALSE &&
        Reaches(m_bus.get(), &error)) {
        return true;
    }
    LOG_ERROR("Cannot send the launch request to the running %s: [%d] %s", m_applicationId.c_str(),
              error->code, error->message);
    return false;
}

void SingleInstance::Activated() {
    app_control_s request{m_applicationId, {}};
    m_receiver(request);
}

void SingleInstance::LaunchAction(GVariant* values) {
    app_control_s request = FromActionParameter(m_applicationId, values);
    m_receiver(request);
}

}  // namespace applist::desktop
