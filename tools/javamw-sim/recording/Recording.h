// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "link/Protocol.h"

namespace applist::sim {

/// The side that caused a message.
enum class Side { Application, Middleware };

inline Side Other(Side side) {
    return side == Side::Application ? Side::Middleware : Side::Application;
}

/// Kind of an event on the bus.
enum class MessageKind {
    Acquired,  ///< A handshake name was acquired: the first half of an announcement.
    Released,  ///< The name was released, which announces its owner.
    Call,
    Reply,
    Error,   ///< Error reply to a call.
    Signal,  ///< To one peer, or broadcast.
    Left,    ///< A connection to the bus ended.
};

/// One event between an application and a middleware.
struct RecordedMessage {
    size_t line = 0;   ///< Line in its file, from 1; 0 if not from a file.
    int64_t time = 0;  ///< Microseconds since the recording began.
    MessageKind kind{};
    Side side{};
    std::string from;   ///< Unique bus name of the sender.
    std::string to;     ///< Unique bus name of the receiver; empty if broadcast.
    uint64_t call = 0;  ///< Call, Reply, Error: number of the call, from 1.
    std::string name;   ///< Acquired, Released: the bus name. Error: the name of the error.
    /// Error: its message. Call, Reply, Signal: the type of an unexpected payload.
    std::string text;
    Bytes bytes;  ///< Call, Reply, Signal: the payload.

    bool operator==(const RecordedMessage&) const = default;
};

/// A recording, in the order of delivery by the bus.
struct Recording {
    std::vector<RecordedMessage> messages;
    std::string remark;  ///< Message for the user; usually empty.
};

/// True for Call, Reply and Signal.
bool CarriesBytes(MessageKind kind);

std::string_view NameOf(Side side);
std::string_view NameOf(MessageKind kind);

/// Describes message on one line: "AddItems w1=Weather", "event 2 ItemSelected". Long lists are
/// truncated.
std::string Describe(const RecordedMessage& message);

/// The messages between one middleware and one application, without the handshake.
struct Conversation {
    std::string middleware;   ///< Its unique bus name.
    std::string application;  ///< Its unique bus name.
    Recording recording;
};

/// Returns all conversations in the order of their first messages. Broadcast signals belong to none
/// of them.
std::vector<Conversation> ConversationsOf(const Recording& recording);

/// A message that the middleware sent.
struct SentMessage {
    MessageKind kind{};  ///< Call or Signal.
    Bytes bytes;
    int64_t time = 0;          ///< Microseconds since the first message.
    size_t answersBefore = 0;  ///< Number of calls answered before it.
};

/// Returns the messages of the middleware in order.
std::vector<SentMessage> SentMessagesOf(const Conversation& conversation);

/// Returns the signals of the application, and its replies together with their calls. Repeated
/// LocalCreated events count once; how many are sent when both sides start together depends on
/// timing.
Recording ApplicationSide(const Conversation& conversation);

}  // namespace applist::sim
