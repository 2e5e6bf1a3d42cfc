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
    std::optional<uint16_t> id;  ///< The program number; none in a file that knows no services.
    std::string name;            ///< UTF-8; empty when the broadcast does not say.
    std::vector<std::shared_ptr<const ApplicationTable>> tables;  ///< Never null.
};

/// What a broadcast says from a point in time on.
struct Snapshot {
    std::optional<double> seconds;  ///< Since the start; none in a file without a clock.
    std::vector<BroadcastService> services;
};

/// What a file says about applications, in the order of time.
struct Broadcast {
    std::vector<Snapshot> snapshots;  ///< Never empty; each differs from the one before.
    Damage damage;
};

}  // namespace applist::sim
