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

/// Whose doing a message is.
enum class Side { Application, Middleware };

/// What happened on the bus.
enum class MessageKind {
    Acquired,  ///< A handshake name was taken: the first half of an announcement.
    Released,  ///< It was given up, which announces its owner.
    Call,
    Reply,
    Error,   ///< The answer to a call that was not served.
    Signal,  ///< To one other side, or to everybody.
    Left,    ///< A side's connection to the bus ended.
};

/// One thing that happened between an application and a middleware.
struct RecordedMessage {
    size_t line = 0;   ///< Where it stands in its file, from 1; 0 outside of files.
    int64_t time = 0;  ///< Microseconds since the recording began.
    MessageKind kind{};
    Side side{};
    std::string from;   ///< The unique bus name of who did it.
    std::string to;     ///< Of whom it was meant for; empty for everybody.
    uint64_t call = 0;  ///< Call, Reply, Error: which call, from 1.
    std::string name;   ///< Acquired, Released: the bus name. Error: the error's name.
    std::string text;   ///< Error: its message. Call, Reply, Signal: the type of an odd content.
    Bytes bytes;        ///< Call, Reply, Signal: the content.

    bool operator==(const RecordedMessage&) const = default;
};

/// What was recorded, in the order in which the bus delivered it.
struct Recording {
    std::vector<RecordedMessage> messages;
    std::string remark;  ///< For the person at the terminal; mostly empty.
};

/// True for Call, Reply and Signal.
bool CarriesBytes(MessageKind kind);

std::string_view NameOf(Side side);
std::string_view NameOf(MessageKind kind);

/// What message says, for people and on one line: "AddItems w1=Weather", "event 2 ItemSelected".
/// Long lists are cut.
std::string Describe(const RecordedMessage& message);

}  // namespace applist::sim
