// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "recording/Recording.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "shared/Output.h"

namespace applist::sim {
namespace {

// Keeps a description on one readable line. The bytes contain all items.
constexpr size_t SHOWN_ITEMS = 10;

std::string Count(size_t count, const std::string& what) {
    return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
}

std::string DescribeItem(const Item& item) {
    return item == Item{} ? "(no item)" : tools::OneLine(item.id) + '=' + tools::OneLine(item.name);
}

std::string DescribeItems(const Items& items) {
    std::string text;
    for (size_t i = 0; i < std::min(items.size(), SHOWN_ITEMS); ++i) {
        text += ' ' + DescribeItem(items[i]);
    }
    if (items.size() > SHOWN_ITEMS) {
        text += " and " + std::to_string(items.size() - SHOWN_ITEMS) + " more";
    }
    return text;
}

// Returns the end of a message's description: its items, or its size if it is not a list of items.
std::string DescribePayload(const Bytes& payload) {
    const auto items = DecodeItems(payload);
    return items ? DescribeItems(*items)
                 : " with " + Count(payload.size(), "byte") + ", not a list of items";
}

std::string DescribeFunction(int32_t id) {
    const auto* const known = std::ranges::find(FUNCTIONS, static_cast<Function>(id));
    return known == FUNCTIONS.end() ? "function " + std::to_string(id)
                                    : std::string(NameOf(*known));
}

std::string DescribeCall(const Bytes& bytes) {
    // Calls and notifications have the same frame, in which the id follows the payload.
    const auto frame = DecodeNotification(bytes);
    if (!frame) {
        return Count(bytes.size(), "byte") + " without a message id";
    }
    const auto end = bytes.begin() + static_cast<std::ptrdiff_t>(frame->payloadSize);
    return DescribeFunction(static_cast<int32_t>(frame->event)) +
           DescribePayload(Bytes(bytes.begin(), end));
}

std::string DescribeReply(const Bytes& bytes) {
    return bytes.empty() ? "nothing" : DescribePayload(bytes).substr(1);
}

std::string DescribeSignal(const Bytes& bytes) {
    const auto frame = DecodeNotification(bytes);
    return frame ? DescribeNotification(*frame)
                 : Count(bytes.size(), "byte") + " without a message id";
}

}  // namespace

bool CarriesBytes(MessageKind kind) {
    return kind == MessageKind::Call || kind == MessageKind::Reply || kind == MessageKind::Signal;
}

std::string_view NameOf(Side side) {
    return side == Side::Application ? "application" : "middleware";
}

std::string_view NameOf(MessageKind kind) {
    constexpr std::array<std::string_view, 7> NAMES{"acquired", "released", "call", "reply",
                                                    "error",    "signal",   "left"};
    return NAMES.at(static_cast<size_t>(kind));
}

std::string Describe(const RecordedMessage& message) {
    // Such a message contains a text only if its content has an unexpected type.
    if (CarriesBytes(message.kind) && !message.text.empty()) {
        return "content of type " + tools::OneLine(message.text);
    }
    switch (message.kind) {
        case MessageKind::Acquired:
        case MessageKind::Released:
            return tools::OneLine(message.name);
        case MessageKind::Call:
            return DescribeCall(message.bytes);
        case MessageKind::Reply:
            return DescribeReply(message.bytes);
        case MessageKind::Error:
            return tools::OneLine(message.name + ": " + message.text);
        case MessageKind::Signal:
            return DescribeSignal(message.bytes);
        case MessageKind::Left:
            break;
    }
    return "the bus";
}

namespace {

bool IsConversation(const RecordedMessage& message) {
    const bool said = CarriesBytes(message.kind) || message.kind == MessageKind::Error;
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
    const auto found = std::ranges::find_if(conversations, [&](const Conversation& conversation) {
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
