// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "broadcast/Broadcast.h"
#include "feed/BroadcastFilter.h"

namespace applist::sim {

/// One application as one service has it, for people and programs to read. All texts are UTF-8.
struct ListedApplication {
    std::optional<uint16_t> service;  ///< None in a file that knows no services.
    uint32_t organisation = 0;
    uint16_t id = 0;
    std::optional<uint16_t> type;  ///< None where the source has no number for it.
    std::string control;           ///< "PRESENT", or the number of a code without a name.
    uint8_t visibility = 0;        ///< 3 viewers, 1 other applications only, 0 nobody.
    uint8_t priority = 0;
    std::string name;                    ///< The preferred one; empty when there is none.
    std::vector<ApplicationName> names;  ///< One for each language, which is cleaned.
    std::string location;

    bool operator==(const ListedApplication&) const = default;
};

/// Every application that a broadcast carries at any time, offered or not, once for each service:
/// as it was described last, in the order in which they came.
std::vector<ListedApplication> ListApplications(const Broadcast& broadcast,
                                                const BroadcastFilter& filter);

}  // namespace applist::sim
