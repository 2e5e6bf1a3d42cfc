// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <utility>

#include "recording/Recording.h"

namespace applist::sim {

// Messages between a middleware, :1.1, and an application, :1.2.

inline RecordedMessage Called(uint64_t number, Function function, const Items& items = {},
                              int64_t time = 0) {
    RecordedMessage message;
    message.kind = MessageKind::Call;
    message.side = Side::Middleware;
    message.from = ":1.1";
    message.to = ":1.2";
    message.call = number;
    message.time = time;
    message.bytes = EncodeCall(function, items);
    return message;
}

inline RecordedMessage Replied(uint64_t number, Bytes bytes = {}, int64_t time = 0) {
    RecordedMessage message;
    message.kind = MessageKind::Reply;
    message.side = Side::Application;
    message.from = ":1.2";
    message.to = ":1.1";
    message.call = number;
    message.time = time;
    message.bytes = std::move(bytes);
    return message;
}

inline RecordedMessage Failed(uint64_t number, const std::string& text) {
    RecordedMessage message = Replied(number);
    message.kind = MessageKind::Error;
    message.name = "org.freedesktop.DBus.Error.NoReply";
    message.text = text;
    return message;
}

inline RecordedMessage Signalled(Event event, int64_t time = 0) {
    RecordedMessage message = Replied(0, {static_cast<char>(event), 0, 0, 0}, time);
    message.kind = MessageKind::Signal;
    return message;
}

inline RecordedMessage Announced(Side side, const std::string& from, const std::string& name) {
    RecordedMessage message;
    message.kind = MessageKind::Released;
    message.side = side;
    message.from = from;
    message.name = name;
    return message;
}

/// The items as the application sends them.
inline Bytes Payload(const Items& items) {
    Bytes bytes = EncodeCall(Function::AddItems, items);
    bytes.resize(bytes.size() - 4);
    return bytes;
}

}  // namespace applist::sim
