// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "app/SingleInstance.h"

#include <utility>

#include "CallbackGuard.h"
#include "app/Deadline.h"
#include "bus/SessionBus.h"
#include "launch/LaunchProtocol.h"

namespace applist::desktop {
namespace {

// Time limit for the bus or another instance: long enough if they are busy starting, short enough
// for a waiting viewer.
constexpr std::chrono::seconds REPLY_TIMEOUT{3};

// Waits until the bus daemon has received all messages sent on the connection. It handles messages
// in order, so its reply to a Ping proves that. g_dbus_connection_flush_sync() is not used because
// it would wait forever for a hanging daemon.
bool Reaches(GDBusConnection* bus, GError** error) {
    g_autoptr(GVariant) answer = g_dbus_connection_call_sync(
        bus, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus.Peer", "Ping",
        nullptr, nullptr, G_DBUS_CALL_FLAGS_NONE,
        std::chrono::duration_cast<std::chrono::duration<int, std::milli>>(REPLY_TIMEOUT).count(),
        nullptr, error);
    return answer != nullptr;
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
        GDBusConnection* bus = g_application_get_dbus_connection(m_application.get());
        g_object_ref(bus);
        m_application.reset();
        Reaches(bus, nullptr);
        g_object_unref(bus);
    }
}

// Keeps the application object, because the caller may be one of its signal handlers.
void SingleInstance::Release() {
    if (m_role == Role::First) {
        g_dbus_connection_call(g_application_get_dbus_connection(m_application.get()),
                               "org.freedesktop.DBus", "/org/freedesktop/DBus",
                               "org.freedesktop.DBus", "ReleaseName",
                               g_variant_new("(s)", m_applicationId.c_str()), nullptr,
                               G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr, nullptr);
    }
}

void SingleInstance::Register() {
    m_application.reset(g_application_new(m_applicationId.c_str(), G_APPLICATION_DEFAULT_FLAGS));
    AcceptRequests();
    const Deadline deadline(REPLY_TIMEOUT);
    g_autoptr(GError) error = nullptr;
    if (g_application_register(m_application.get(), deadline.cancellable(), &error) == FALSE) {
        LOG_ERROR(
            "%s cannot register on the session bus and does not detect other instances: [%d] %s",
            m_applicationId.c_str(), error->code, error->message);
        return;
    }
    GDBusConnection* bus = g_application_get_dbus_connection(m_application.get());
    if (bus == nullptr) {
        LOG_ERROR("The session bus does not reply; %s does not detect other instances",
                  m_applicationId.c_str());
        return;
    }
    // The list must stay open if the session bus disconnects.
    g_dbus_connection_set_exit_on_close(bus, FALSE);
    const bool later = g_application_get_is_remote(m_application.get()) != FALSE;
    m_role = later ? Role::Later : Role::First;
}

void SingleInstance::AcceptRequests() {
    g_signal_connect(m_application.get(), "activate", G_CALLBACK(OnActivate), this);
    GSimpleAction* launch = g_simple_action_new(LAUNCH_ACTION, G_VARIANT_TYPE(LAUNCH_ACTION_TYPE));
    g_signal_connect(launch, "activate", G_CALLBACK(OnLaunchAction), this);
    g_action_map_add_action(G_ACTION_MAP(m_application.get()), G_ACTION(launch));
    g_object_unref(launch);
}

bool SingleInstance::HandOver(const app_control_s& request) {
    if (request.extraData.empty()) {
        g_application_activate(m_application.get());
    } else {
        g_action_group_activate_action(G_ACTION_GROUP(m_application.get()), LAUNCH_ACTION,
                                       ToActionParameter(request));
    }
    g_autoptr(GError) error = nullptr;
    if (Reaches(g_application_get_dbus_connection(m_application.get()), &error)) {
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
