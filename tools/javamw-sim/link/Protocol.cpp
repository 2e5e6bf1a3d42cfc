// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "link/Protocol.h"

#include <algorithm>
#include <span>
#include <sstream>
#include <string>
#include <utility>

#include "LittleEndian.h"
#include "Number.h"
#include "applist/DefaultAppListItem.h"
#include "applist/RemoteAppListItem.h"
#include "shared/Output.h"

namespace applist::sim {

std::string_view NameOf(Function function) {
    constexpr std::array<std::string_view, FUNCTIONS.size()> names{
        "SetSelection", "GetSelection", "GetAllItems", "RemoveAllItems", "AddItems",
        "AddItemAtEnd", "SetClicked",   "RemoveItem",  "ModifyItem",
    };
    // The ids are consecutive, so the distance from the first is the index.
    return names.at(static_cast<size_t>(function) - static_cast<size_t>(FUNCTIONS.front()));
}

std::string_view NameOf(Event event) {
    constexpr std::array<std::string_view, EVENTS.size()> names{"ItemChanged", "ItemSelected",
                                                                "ItemClicked", "LocalCreated"};
    // The ids are consecutive. An id below the first wraps to a large index.
    const size_t index = static_cast<size_t>(event) - static_cast<size_t>(EVENTS.front());
    return index < names.size() ? names.at(index) : "Unknown";
}

std::optional<Function> FunctionByName(std::string_view name) {
    const auto* const found = std::ranges::find_if(
        FUNCTIONS, [name](Function function) { return NameOf(function) == name; });
    return found == FUNCTIONS.end() ? std::nullopt : std::optional(*found);
}

Bytes EncodeCall(Function function, const Items& items) {
    std::ostringstream payload;
    for (const Item& item : items) {
        DefaultAppListItem listed(item.name, item.id);
        payload << RemoteAppListItem(listed);
    }
    const std::string text = payload.str();
    Bytes message(text.begin(), text.end());
    const auto id = ToLittleEndian(static_cast<uint32_t>(function));
    message.insert(message.end(), id.begin(), id.end());
    return message;
}

std::optional<Items> DecodeItems(const Bytes& payload) {
    std::istringstream stream(std::string(payload.begin(), payload.end()));
    Items items;
    // The check for the end distinguishes a complete list from a truncated item.
    while (stream.peek() != std::istringstream::traits_type::eof()) {
        RemoteAppListItem item;
        if (!(stream >> item)) {
            return std::nullopt;
        }
        items.push_back({item.GetUnigueId(), item.GetVisibleName()});
    }
    return items;
}

Result<Items> ItemsOfReply(const Result<Bytes>& reply) {
    if (!reply) {
        return Result<Items>::Failure(reply.error());
    }
    auto items = DecodeItems(*reply);
    return items ? Result<Items>(std::move(*items))
                 : Result<Items>::Failure("the reply of " + std::to_string(reply->size()) +
                                          " bytes is not a list of items");
}

std::string ItemLine(const Item& item) {
    return tools::OneLine(item.id) + '\t' + tools::OneLine(item.name);
}

std::string DescribeNotification(const Notification& notification) {
    std::string text = "event " + std::to_string(static_cast<int32_t>(notification.event)) + ' ' +
                       std::string(NameOf(notification.event));
    if (notification.payloadSize > 0) {
        text += " with " + std::to_string(notification.payloadSize) + " unexpected bytes";
    }
    return text;
}

std::string DescribeMessage(const Bytes& message) {
    const auto notification = DecodeNotification(message);
    return notification
               ? DescribeNotification(*notification)
               : "notification of " + std::to_string(message.size()) + " bytes without an id";
}

std::optional<Notification> DecodeNotification(const Bytes& message) {
    if (message.size() < WIRE_NUMBER_SIZE) {
        return std::nullopt;
    }
    const uint32_t id = FromLittleEndian(std::span(message).last<WIRE_NUMBER_SIZE>());
    // An unknown id is kept as a number, so that the report can show it.
    return Notification{static_cast<Event>(static_cast<int32_t>(id)),
                        message.size() - WIRE_NUMBER_SIZE};
}

std::string ToHex(std::string_view bytes) {
    constexpr const char* DIGITS = "0123456789abcdef";
    std::string text;
    text.reserve(bytes.size() * 2);
    for (const char byte : bytes) {
        text += DIGITS[static_cast<uint8_t>(byte) >> 4U];
        text += DIGITS[static_cast<uint8_t>(byte) & 0xFU];
    }
    return text;
}

std::optional<Bytes> FromHex(std::string_view text) {
    if (text.size() % 2 != 0) {
        return std::nullopt;
    }
    Bytes bytes;
    bytes.reserve(text.size() / 2);
    for (size_t i = 0; i < text.size(); i += 2) {
        const auto value = ParseNumber<uint8_t>(text.substr(i, 2), 16);
        if (!value) {
            return std::nullopt;
        }
        bytes.push_back(static_cast<char>(*value));
    }
    return bytes;
}

}  // namespace applist::sim
