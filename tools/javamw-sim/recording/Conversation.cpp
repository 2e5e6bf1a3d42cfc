// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "recording/Conversation.h"

#include <algorithm>
#include <utility>

namespace applist::sim {
namespace {

bool IsConversation(const RecordedMessage& message) {
    const bool said = message.kind == MessageKind::Call || message.kind == MessageKind::Reply ||
                      message.kind == MessageKind::Error || message.kind == MessageKind::Signal;
    // A broadcast signal does not belong to a conversation of two.
    return said && !message.to.empty();
}

bool IsAnswer(const RecordedMessage& message) {
    return message.kind == MessageKind::Reply || message.kind == MessageKind::Error;
}

bool IsLocalCreated(const RecordedMessage& message) {
    const auto event = DecodeNotification(message.bytes);
    return message.kind == MessageKind::Signal && message.side == Side::Application && event &&
           event->event == Event::LocalCreated;
}

Conversation& Find(std::vector<Conversation>& conversations, const std::string& middleware,
                   const std::string& application) {
    const auto found = std::find_if(
        conversations.begin(), conversations.end(), [&](const Conversation& conversation) {
            return conversation.middleware == middleware && conversation.application == application;
        });
    return found != conversations.end()
               ? *found
               : conversations.emplace_back(Conversation{middleware, application, {}});
}

}  // namespace

std::vector<Conversation> ConversationsOf(const Recording& recording) {
    std::vector<Conversation> conversations;
    for (const RecordedMessage& message : recording.messages) {
        if (IsConversation(message)) {
            const bool fromMiddleware = message.side == Side::Middleware;
            Find(conversations, fromMiddleware ? message.from : message.to,
                 fromMiddleware ? message.to : message.from)
                .recording.messages.push_back(message);
        }
    }
    return conversations;
}

std::vector<SentMessage> SentMessagesOf(const Conversation& conversation) {
    std::vector<SentMessage> sent;
    size_t answers = 0;
    const auto& messages = conversation.recording.messages;
    const int64_t begin = messages.empty() ? 0 : messages.front().time;
    for (const RecordedMessage& message : messages) {
        if (message.side == Side::Application) {
            answers += IsAnswer(message) ? 1 : 0;
        } else if (!IsAnswer(message)) {
            // The number of answers lets a replay keep the order of the recording at any speed.
            sent.push_back({message.kind, message.bytes, message.time - begin, answers});
        }
    }
    return sent;
}

Recording ApplicationSide(const Conversation& conversation) {
    Recording said;
    bool created = false;
    for (const RecordedMessage& message : conversation.recording.messages) {
        // Repeated LocalCreated events depend on timing, so only the first one counts.
        const bool again = IsLocalCreated(message) && std::exchange(created, true);
        // Calls are kept, because a comparison places a reply together with its call.
        const bool counts = message.side == Side::Application || message.kind == MessageKind::Call;
        if (counts && !again) {
            said.messages.push_back(message);
        }
    }
    return said;
}

}  // namespace applist::sim
