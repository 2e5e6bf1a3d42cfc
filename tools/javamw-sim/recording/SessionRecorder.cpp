// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "recording/SessionRecorder.h"

#include <utility>

namespace applist::sim {
namespace {

// What all names of the handshake begin with.
constexpr const char* NAMESPACE = "org.vantu.JavaMW";

// The bus tells a connection of its own names only when it asks; the tap hears the answer.
Registration ListenToAnnouncements(GDBusConnection* connection) {
    const unsigned id = g_dbus_connection_signal_subscribe(
        connection, "org.freedesktop.DBus", "org.freedesktop.DBus", "NameOwnerChanged",
        "/org/freedesktop/DBus", NAMESPACE, G_DBUS_SIGNAL_FLAGS_MATCH_ARG0_NAMESPACE,
        [](GDBusConnection*, const char*, const char*, const char*, const char*, GVariant*, void*) {
        },
        nullptr, nullptr);
    return Registration([connection, id] { g_dbus_connection_signal_unsubscribe(connection, id); });
}

}  // namespace

Result<std::unique_ptr<SessionRecorder>> SessionRecorder::Start(GDBusConnection* connection,
                                                                TrafficTap::Use use,
                                                                const std::string& file) {
    using Started = Result<std::unique_ptr<SessionRecorder>>;
    auto created = RecordingFile::Create(file);
    if (!created) {
        return Started::Failure(created.error());
    }
    return Started(std::make_unique<SessionRecorder>(connection, use, std::move(*created)));
}

SessionRecorder::SessionRecorder(GDBusConnection* connection, TrafficTap::Use use,
                                 RecordingFile file)
    : m_file(std::move(file)),
      m_tap(std::make_unique<TrafficTap>(
          connection, use, [this](const RecordedMessage& message) { m_file.Write(message); })) {
    if (use == TrafficTap::Use::Partner) {
        m_announcements = ListenToAnnouncements(connection);
    }
}

std::string SessionRecorder::Finish() {
    m_announcements.Release();
    m_tap.reset();
    return m_file.error();
}

}  // namespace applist::sim
