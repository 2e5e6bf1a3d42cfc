// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>

#include "bus/Connection.h"
#include "recording/RecordedMessage.h"

namespace applist::sim {

/// Hears all that passes a connection between applications and middlewares, both ways and in the
/// order of the wire, handshake included.
class TrafficTap {
public:
    /// Runs on a thread of GIO's, one call at a time, and never after the tap is gone.
    using Take = std::function<void(const RecordedMessage&)>;

    enum class Use {
        Partner,  ///< The connection goes on doing its work.
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

}  // namespace applist::sim
