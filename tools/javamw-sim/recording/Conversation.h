// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "recording/RecordedMessage.h"

namespace applist::sim {

/// What one middleware and one application said to each other, without the handshake.
struct Conversation {
    std::string middleware;   ///< Its unique bus name.
    std::string application;  ///< Its unique bus name.
    Recording recording;
};

/// All of recording, in the order of their first messages. Signals to everybody belong to none.
std::vector<Conversation> ConversationsOf(const Recording& recording);

/// Something that the middleware sent.
struct SentMessage {
    MessageKind kind{};  ///< Call or Signal.
    Bytes bytes;
    int64_t time = 0;          ///< Microseconds since the first of the conversation.
    size_t answersBefore = 0;  ///< How many calls had been answered.
};

/// What the middleware sent, in order.
std::vector<SentMessage> SentMessagesOf(const Conversation& conversation);

/// What the application said: its signals, and its answers with the calls that they are to. That
/// it created its list counts once: how often it says so when both start at once is chance.
Recording ApplicationSide(const Conversation& conversation);

}  // namespace applist::sim
