// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "broadcast/ApplicationTable.h"
#include "broadcast/ByteReader.h"
#include "broadcast/Damage.h"

namespace applist::sim {

/// One service of a broadcast and the application tables that it names.
struct BroadcastService {
    std::optional<uint16_t> id;  ///< The program number; absent in a file without services.
    std::string name;            ///< UTF-8; empty if the broadcast does not contain it.
    std::vector<std::shared_ptr<const ApplicationTable>> tables;  ///< Never null.
};

/// The services of a broadcast from a point in time until the next snapshot.
struct Snapshot {
    std::optional<double> seconds;  ///< Since the start; absent in a file without a clock.
    std::vector<BroadcastService> services;
};

/// Calls visit(service, table, application) for each application of services, in their order.
template <typename Visit>
void ForEachApplication(const std::vector<BroadcastService>& services, Visit&& visit) {
    for (const BroadcastService& service : services) {
        for (const auto& table : service.tables) {
            for (const Application& application : table->applications) {
                visit(service, *table, application);
            }
        }
    }
}

/// The contents of a broadcast file over time.
struct Broadcast {
    std::vector<Snapshot> snapshots;  ///< Never empty; each differs from the one before.
    Damage damage;
};

/// Called with the services after each new table. replaces is true if the table replaces an earlier
/// version that a list may depend on.
using SnapshotHandler = std::function<void(Snapshot snapshot, bool replaces)>;

/// Parses one kind of broadcast piece by piece. The result does not depend on the pieces.
class BroadcastParser {
public:
    BroadcastParser() = default;
    virtual ~BroadcastParser() = default;
    BroadcastParser(const BroadcastParser&) = delete;
    BroadcastParser& operator=(const BroadcastParser&) = delete;

    /// Parses the bytes that follow those parsed so far, and returns how many it has used. The
    /// caller passes the others again, followed by more. With last, bytes are the end of the
    /// broadcast, and all of them are used.
    virtual size_t Parse(ByteSpan bytes, bool last) = 0;
    /// Why the broadcast cannot be used; empty if it can.
    virtual std::string error() const { return {}; }
};

}  // namespace applist::sim
