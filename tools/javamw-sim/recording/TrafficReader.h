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

/// Picks the traffic between applications and middlewares out of the messages of a bus: the
/// handshake's names, calls with their answers, signals, and who left.
///
/// Which side somebody is on shows in the names of the handshake; for those who made it before the
/// first message, who calls is a middleware and who signals an application.
class TrafficReader {
public:
    /// ownName stands in for the sender of messages that the bus has not stamped yet: the outgoing
    /// ones of a connection.
    explicit TrafficReader(std::string ownName = {}) : m_ownName(std::move(ownName)) {}

    /// Nothing for a message that is none of theirs. Messages come in the order of the bus.
    std::optional<RecordedMessage> Read(GDBusMessage* message, int64_t time);

private:
    using CallKey = std::pair<std::string, uint32_t>;  ///< Who called, and the message's serial.
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
    std::map<CallKey, PendingCall> m_calls;  ///< Those not answered yet.
    uint64_t m_lastCall = 0;
};

}  // namespace applist::sim
