// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "ipc/javamw-dbus-local.h"

/// The channel to the middleware without a bus. Linking it provides JavaMWDbusLocal, all but the
/// callbacks for GIO, which nobody calls here.
///
/// Tests play the bus: they call the hooks of the live transport. Construction, destruction and
/// each notification are also noted in the history of FakePlatformLog, as "transport created:
/// NAME", "transport destroyed" and "notify WHOM: BYTES".
namespace applist::test {

struct SentNotification {
    std::vector<char> bytes;
    /// Nothing when it went to all partners.
    std::optional<std::string> partner;

    bool operator==(const SentNotification&) const = default;
};

struct FakeTransport {
    /// The transport built last, null once it is destroyed.
    JavaMWDbusLocal* live = nullptr;
    /// The channel name that it was given.
    std::string name;
    /// Whom IsConnectionReady() confirms.
    std::set<std::string> connected;
    /// Oldest first.
    std::vector<SentNotification> sent;
};

/// The one transport of the process; tests assign FakeTransport{} to start afresh.
FakeTransport& TheTransport();

/// The history's form of bytes: "01 00 ff".
std::string ToHex(const std::vector<char>& bytes);

}  // namespace applist::test
