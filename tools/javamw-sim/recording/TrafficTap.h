// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "common/Result.h"
#include "link/Connection.h"
#include "recording/RecordedMessage.h"
#include "recording/RecordingFile.h"

namespace applist::sim {

/// Reports all traffic between applications and middlewares on a connection in both directions and
/// in the order of the wire, including the handshake.
class TrafficTap {
public:
    /// Runs on a thread of GIO, one call at a time. Never runs after the tap is destroyed.
    using Take = std::function<void(const RecordedMessage&)>;

    enum class Use {
        Participant,  ///< Messages are delivered as usual.
        Monitor,      ///< Messages are only observed and not delivered.
    };

    /// connection must outlive the tap.
    TrafficTap(GDBusConnection* connection, Use use, Take take);
    ~TrafficTap();
    TrafficTap(const TrafficTap&) = delete;
    TrafficTap& operator=(const TrafficTap&) = delete;

private:
    struct State;

    static GDBusMessage* cb_Message(GDBusConnection*, GDBusMessage* message, gboolean incoming,
                                    void* state) noexcept;

    GDBusConnection* m_connection;
    std::shared_ptr<State> m_state;
    unsigned m_filter = 0;
};

/// Records the traffic of one connection to a file.
class SessionRecorder {
public:
    /// A participant also records its own announcements. connection must outlive the recorder. A
    /// failure names the file.
    static Result<std::unique_ptr<SessionRecorder>> Start(GDBusConnection* connection,
                                                          TrafficTap::Use use,
                                                          const std::string& file);
    SessionRecorder(GDBusConnection* connection, TrafficTap::Use use, RecordingFile file);

    /// Ends the recording. Returns the first write error, or an empty string. Call only once.
    std::string Finish();
    /// Number of messages in the file. REQUIRES: finished.
    size_t count() const { return m_file.count(); }

private:
    RecordingFile m_file;
    Registration m_announcements;
    std::unique_ptr<TrafficTap> m_tap;
};

}  // namespace applist::sim
