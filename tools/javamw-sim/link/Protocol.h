// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace applist::sim {

/// One entry of the application's list, as the middleware sees it.
struct Item {
    std::string id;    ///< The entry's identity; empty stands for no entry.
    std::string name;  ///< What the viewer reads, UTF-8.

    bool operator==(const Item&) const = default;
};

using Items = std::vector<Item>;

/// A payload or a whole message on the bus.
using Bytes = std::vector<char>;

/// What the middleware can call; the value is the message id.
enum class Function : int32_t {
    SetSelection = 2000,
    GetSelection = 2001,
    GetAllItems = 2002,
    RemoveAllItems = 2003,
    AddItems = 2004,
    AddItemAtEnd = 2005,
    SetClicked = 2006,
    RemoveItem = 2007,
    ModifyItem = 2008,
};

/// What the application tells the middleware; the value is the message id.
enum class Event : int32_t {
    ItemChanged = 1,
    ItemSelected = 2,
    ItemClicked = 3,
    LocalCreated = 4,
};

inline constexpr std::array FUNCTIONS{
    Function::SetSelection,   Function::GetSelection, Function::GetAllItems,
    Function::RemoveAllItems, Function::AddItems,     Function::AddItemAtEnd,
    Function::SetClicked,     Function::RemoveItem,   Function::ModifyItem,
};

inline constexpr std::array EVENTS{Event::ItemChanged, Event::ItemSelected, Event::ItemClicked,
                                   Event::LocalCreated};

std::string_view NameOf(Function function);
/// "Unknown" for an id that is no event.
std::string_view NameOf(Event event);
/// Nothing when no function has the name.
std::optional<Function> FunctionByName(std::string_view name);

/// The message that calls function with items: their forms back to back, then the id.
Bytes EncodeCall(Function function, const Items& items);

/// The items that stand back to back in payload; nothing when bytes are left that are no item.
std::optional<Items> DecodeItems(const Bytes& payload);

/// "id<TAB>name", each on one line.
std::string ItemLine(const Item& item);

/// A notification taken apart.
struct Notification {
    Event event{};
    size_t payloadSize = 0;
};

/// "event 1 ItemChanged", and what else it holds.
std::string DescribeNotification(const Notification& notification);

/// Nothing when message is too short to hold an id.
std::optional<Notification> DecodeNotification(const Bytes& message);

/// Two lower-case digits for each byte.
std::string ToHex(std::string_view bytes);
inline std::string ToHex(const Bytes& bytes) {
    return ToHex(std::string_view(bytes.data(), bytes.size()));
}

/// Nothing when text is anything but pairs of digits.
std::optional<Bytes> FromHex(std::string_view text);

}  // namespace applist::sim
