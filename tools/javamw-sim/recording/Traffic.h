// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include <gio/gio.h>

#include "recording/Recording.h"

namespace applist::sim {

/// Selects the traffic between applications and middlewares from the messages of a bus: names of
/// the handshake, calls and replies, signals, and disconnections.
///
/// The names of the handshake determine the side of a connection. If the handshake is not in the
/// messages, the caller is a middleware and the sender of a signal is an application.
class TrafficReader {
public:
    /// ownName is the sender of messages without a sender: the outgoing messages of the own
    /// connection.
    explicit TrafficReader(std::string ownName = {}) : m_ownName(std::move(ownName)) {}

    /// Returns nothing for an unrelated message. Messages must be passed in the order of the bus.
    std::optional<RecordedMessage> Read(GDBusMessage* message, int64_t time);

private:
    using CallKey = std::pair<std::string, uint32_t>;  ///< Caller and serial of the message.
    struct PendingCall {
        uint64_t number = 0;
        std::string called;
        Side caller{};
    };

    std::string SenderOf(GDBusMessage* message) const;
    RecordedMessage Begin(GDBusMessage* message, MessageKind kind);
    std::optional<RecordedMessage> ReadSignal(GDBusMessage* message);
    std::optional<RecordedMessage> ReadOwnerChange(GDBusMessage* message);
    std::optional<RecordedMessage> ReadCall(GDBusMessage* message);
    std::optional<RecordedMessage> ReadAnswer(GDBusMessage* message);
    std::optional<RecordedMessage> Leave(const std::string& name);

    std::string m_ownName;
    std::map<std::string, Side> m_sides;
    std::map<CallKey, PendingCall> m_calls;  ///< Calls without a reply so far.
    uint64_t m_lastCall = 0;
};

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

}  // namespace applist::sim
