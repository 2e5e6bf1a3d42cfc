// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "ipc/javamw-dbus-local.h"

/// The channel to the middleware without a bus. Linking it provides JavaMWDbusLocal except for its
/// GIO callbacks, which are not called here.
///
/// Tests take the bus' role by calling the hooks of the live transport. Construction, destruction
/// and each notification are also noted in the history of FakePlatformLog, as "transport created:
/// NAME", "transport destroyed" and "notify WHOM: BYTES".
namespace applist::test {

struct SentNotification {
    std::vector<char> bytes;
    /// Not set if the notification was sent to all partners.
    std::optional<std::string> partner;

    bool operator==(const SentNotification&) const = default;
};

struct FakeTransport {
    /// The transport created last; null after its destruction.
    JavaMWDbusLocal* live = nullptr;
    /// The channel name passed to its constructor.
    std::string name;
    /// The partners for which IsConnectionReady() returns true.
    std::set<std::string> connected;
    /// Oldest first.
    std::vector<SentNotification> sent;
};

/// The one transport of the process; tests assign FakeTransport{} to reset it.
FakeTransport& TheTransport();

/// Formats bytes as the history does: "01 00 ff".
std::string ToHex(const std::vector<char>& bytes);

}  // namespace applist::test
