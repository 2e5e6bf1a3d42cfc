// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "GlibHandles.h"
#include "Result.h"
#include "link/Protocol.h"

namespace applist::sim {

/// Returns the payload of calls, replies and signals, "(ay)", as a floating reference.
GVariant* ToVariant(const Bytes& bytes);

bool HoldsBytes(GVariant* parameters);

/// REQUIRES: HoldsBytes(parameters).
Bytes FromVariant(GVariant* parameters);

using ConnectionPtr = GObjectPtr<GDBusConnection>;

/// Connects to the message bus at address, or to the system bus when address is empty. The
/// connection is not shared, and its loss does not end the process. Blocks.
Result<ConnectionPtr> OpenBus(const std::string& address);

/// The name and path of the bus daemon.
constexpr const char* DAEMON = "org.freedesktop.DBus";
constexpr const char* DAEMON_PATH = "/org/freedesktop/DBus";

/// Calls a method of the bus daemon and waits for the reply. A null replyType matches every reply.
/// Returns null and sets error if the call fails.
GVariantPtr CallDaemon(GDBusConnection* connection, const char* interface, const char* method,
                       GVariant* parameters, const char* replyType, GError** error);

/// Selects signals of the bus by their properties. A null member matches every value.
struct SignalMatch {
    const char* sender = nullptr;
    const char* interface = nullptr;
    const char* member = nullptr;
    const char* path = nullptr;
    const char* argument = nullptr;  ///< The first argument of the signal.
    bool anyBelow = false;           ///< argument is a namespace of names.
};
/// NameOwnerChanged signals of the bus daemon for this name, or for all below it.
SignalMatch OwnerChangesOf(const char* name, bool anyBelow = false);

/// The contents of such a signal. An owner is a unique bus name; empty if there is none.
struct OwnerChange {
    std::string name;
    std::string oldOwner;
    std::string newOwner;
};
/// Returns nothing if the types of parameters are others.
std::optional<OwnerChange> ReadOwnerChange(GVariant* parameters);

/// Runs action for each signal. connection must outlive the registration.
Registration Subscribe(GDBusConnection* connection, const SignalMatch& match,
                       std::function<void(const std::string& sender, GVariant* parameters)> action);

/// Runs action when the bus closes the connection, which must outlive the registration.
Registration WhenClosed(GDBusConnection* connection, std::function<void()> action);

}  // namespace applist::sim
