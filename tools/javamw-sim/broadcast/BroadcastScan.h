// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "broadcast/ApplicationTable.h"
#include "broadcast/ByteReader.h"
#include "protocol/Item.h"

namespace applist::sim {

/// One service of a broadcast and the application tables that it names.
struct BroadcastService {
    uint16_t program = 0;
    std::vector<ApplicationTable> tables;
};

/// What a recorded transport stream says about its applications.
struct Broadcast {
    std::vector<BroadcastService> services;
    size_t damagedPackets = 0;   ///< Broken packets, and places where the rhythm was lost.
    size_t damagedSections = 0;  ///< Wrong CRC, gaps, lengths that do not fit.
};

/// Reads the whole stream of 188-byte packets. Of each table the last version seen counts. Damaged
/// parts are skipped and counted.
Broadcast ScanBroadcast(ByteSpan stream);

/// The applications offered to the viewer, each once, in the order in which services and tables
/// name them. An application without a readable name goes by its id.
Items OfferedItems(const Broadcast& broadcast);

}  // namespace applist::sim
