// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>

#include "link/GioHandles.h"
#include "recording/RecordedMessage.h"

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

}  // namespace applist::sim
