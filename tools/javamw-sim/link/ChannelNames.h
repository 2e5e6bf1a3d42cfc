// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <string>

#include "link/Handshake.h"

/// Names that the middleware and the application use on the bus.
namespace applist::sim::names {

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

}  // namespace applist::sim::names
