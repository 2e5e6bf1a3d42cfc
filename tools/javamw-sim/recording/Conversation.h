// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "recording/RecordedMessage.h"

namespace applist::sim {

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
