// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "broadcast/ApplicationTable.h"
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

}  // namespace applist::sim
