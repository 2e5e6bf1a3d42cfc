// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "recording/TrafficTap.h"

#include <mutex>
#include <string>
#include <utility>

#include "recording/TrafficReader.h"

namespace applist::sim {

/// Shared with the filter, which may still run for a moment after it was removed.
struct TrafficTap::State {
    State(std::string name, Use how, Take taker)
        : ownName(std::move(name)),
          use(how),
          begin(g_get_monotonic_time()),
          reader(ownName),
          take(std::move(taker)) {}

    void Hear(GDBusMessage* message) {
        const std::lock_guard lock(mutex);
        // The filter may still run while the tap is being destroyed.
        if (!take) {
            return;
        }
        if (const auto heard = reader.Read(message, g_get_monotonic_time() - begin)) {
            take(*heard);
        }
    }

    // GIO would answer a call that is passed on, and the bus disconnects monitors that send.
    bool Keeps(GDBusMessage* message) const {
        const char* destination = g_dbus_message_get_destination(message);
        return use == Use::Monitor && (destination == nullptr || ownName != destination);
    }

    const std::string ownName;
    const Use use;
    const int64_t begin;
    std::mutex mutex;
    TrafficReader reader;
    Take take;
};

TrafficTap::TrafficTap(GDBusConnection* connection, Use use, Take take)
    : m_connection(connection),
      m_state(std::make_shared<State>(g_dbus_connection_get_unique_name(connection), use,
                                      std::move(take))) {
    m_filter = g_dbus_connection_add_filter(
        // The filter has its own reference to the state, which GIO drops with the filter.
        connection, &TrafficTap::cb_Message, new std::shared_ptr<State>(m_state),
        [](void* state) { delete static_cast<std::shared_ptr<State>*>(state); });
}

TrafficTap::~TrafficTap() {
    {
        // The lock waits for a running callback, so the caller's objects are unused after this.
        const std::lock_guard lock(m_state->mutex);
        m_state->take = nullptr;
    }
    g_dbus_connection_remove_filter(m_connection, m_filter);
}

GDBusMessage* TrafficTap::cb_Message(GDBusConnection* /*connection*/, GDBusMessage* message,
                                     gboolean incoming, void* state) noexcept {
    State& self = **static_cast<std::shared_ptr<State>*>(state);
    self.Hear(message);
    if (incoming != FALSE && self.Keeps(message)) {
        // A filter that drops a message owns its reference.
        g_object_unref(message);
        return nullptr;
    }
    return message;
}

namespace {

// Common prefix of all handshake names.
constexpr const char* NAMESPACE = "org.vantu.JavaMW";

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
    if (use == TrafficTap::Use::Participant) {
        // The bus reports names only to subscribers. The tap sees the resulting signals.
        m_announcements =
            Subscribe(connection, OwnerChangesOf(NAMESPACE, true), [](const auto&, GVariant*) {});
    }
}

std::string SessionRecorder::Finish() {
    m_announcements.Release();
    // The tap writes in another thread until it is destroyed. The error is complete only then.
    m_tap.reset();
    return m_file.error();
}

}  // namespace applist::sim
