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

/// Hears all that passes a connection between applications and middlewares, both ways and in the
/// order of the wire, handshake included.
class TrafficTap {
public:
    /// Runs on a thread of GIO's, one call at a time, and never after the tap is gone.
    using Take = std::function<void(const RecordedMessage&)>;

    enum class Use {
        Participant,  ///< The connection goes on doing its work.
        Monitor,  ///< The connection only looks: what others sent to each other goes no further.
    };

    /// connection must outlive the tap.
    TrafficTap(GDBusConnection* connection, Use use, Take take);
    ~TrafficTap();
    TrafficTap(const TrafficTap&) = delete;
    TrafficTap& operator=(const TrafficTap&) = delete;
    TrafficTap(TrafficTap&&) = delete;
    TrafficTap& operator=(TrafficTap&&) = delete;

private:
    struct State;

    static GDBusMessage* cb_Message(GDBusConnection*, GDBusMessage* message, gboolean incoming,
                                    void* state) noexcept;

    GDBusConnection* m_connection;
    std::shared_ptr<State> m_state;
    unsigned m_filter = 0;
};

/// Records what passes one connection into a file, from its beginning to its end.
class SessionRecorder {
public:
    /// A partner's recorder also hears the announcements that the partner makes itself. connection
    /// must outlive it. A failure names the file.
    static Result<std::unique_ptr<SessionRecorder>> Start(GDBusConnection* connection,
                                                          TrafficTap::Use use,
                                                          const std::string& file);
    SessionRecorder(GDBusConnection* connection, TrafficTap::Use use, RecordingFile file);

    /// Ends the recording. The first error of writing it; empty for none. Once only.
    std::string Finish();
    /// How many messages the file holds. REQUIRES: finished.
    size_t count() const { return m_file.count(); }

private:
    RecordingFile m_file;
    Registration m_announcements;
    std::unique_ptr<TrafficTap> m_tap;
};

}  // namespace applist::sim
