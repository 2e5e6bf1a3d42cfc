// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Result.h"
#include "link/Handshake.h"

namespace applist::sim {

/// Names that the middleware and the application use on the bus.
namespace names {

constexpr const char* OBJECT_PATH = "/org/vantu/javamw/CommunicationChannel/Applist";
constexpr const char* INTERFACE = "org.vantu.javamw.DbusCommunication";
constexpr const char* METHOD = "Send";
constexpr const char* SIGNAL = "SendSignal";
/// The interface that each side exports at OBJECT_PATH. The signal is not declared.
constexpr const char* INTERFACE_XML =
    "<node><interface name='org.vantu.javamw.DbusCommunication'><method name='Send'>"
    "<arg type='ay' name='data' direction='in'/><arg type='ay' name='response' direction='out'/>"
    "</method></interface></node>";

/// Prefix of the names that the application announces.
constexpr const char* SERVICE = "org.vantu.JavaMW.Applist_SERVICE";
/// Prefix of the names that the middleware announces.
constexpr const char* CLIENT = "org.vantu.JavaMW.Applist_CLIENT";
constexpr const char* SYN = "_SYN";
constexpr const char* SYN_ACK = "_SYN_ACK";
constexpr const char* ACK = "_ACK";

/// Returns the name that one side, SERVICE or CLIENT, owns for an announcement.
inline std::string NameOf(const char* side, Announcement announcement) {
    constexpr std::array<const char*, ANNOUNCEMENTS.size()> SUFFIXES{SYN, SYN_ACK, ACK};
    return std::string(side) + SUFFIXES.at(static_cast<size_t>(announcement));
}

}  // namespace names

/// One entry of the application's list, as the middleware sees it.
struct Item {
    std::string id;    ///< Identity of the entry; empty means no entry.
    std::string name;  ///< Visible name, UTF-8.

    bool operator==(const Item&) const = default;
};

using Items = std::vector<Item>;

/// A payload or a whole message on the bus.
using Bytes = std::vector<char>;

/// Functions of the application; the value is the message id.
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

/// A valid call of a function.
struct FunctionCall {
    Function function{};
    Items items;

    bool operator==(const FunctionCall&) const = default;
};

/// Events of the application; the value is the message id.
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
/// Returns "Unknown" for an id that is not an event.
std::string_view NameOf(Event event);
/// Returns nothing if no function has the name.
std::optional<Function> FunctionByName(std::string_view name);

/// Encodes a call of function: the items one after the other, then the id.
Bytes EncodeCall(Function function, const Items& items);

/// Decodes consecutive items; returns nothing if the rest is not a complete item.
std::optional<Items> DecodeItems(const Bytes& payload);

/// Returns the items of a reply. Fails with the error of the call, or if the reply is not a list of
/// items.
Result<Items> ItemsOfReply(const Result<Bytes>& reply);

/// Returns "id<TAB>name", each escaped by OneLine().
std::string ItemLine(const Item& item);

/// A decoded notification.
struct Notification {
    Event event{};
    size_t payloadSize = 0;
};

/// Returns "event 1 ItemChanged", followed by the size of an unexpected payload.
std::string DescribeNotification(const Notification& notification);

/// Returns "event 1 ItemChanged", or a description of an invalid notification.
std::string DescribeMessage(const Bytes& message);

/// Returns nothing if message is too short for an id.
std::optional<Notification> DecodeNotification(const Bytes& message);

/// Returns two lower-case digits for each byte.
std::string ToHex(std::string_view bytes);
inline std::string ToHex(const Bytes& bytes) {
    return ToHex(std::string_view(bytes.data(), bytes.size()));
}

/// Returns nothing if text is not pairs of hexadecimal digits.
std::optional<Bytes> FromHex(std::string_view text);

}  // namespace applist::sim
