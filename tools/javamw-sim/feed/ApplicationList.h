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

/// An application as one service describes it. All texts are UTF-8.
struct ListedApplication {
    std::optional<uint16_t> service;  ///< Absent in a file without services.
    uint32_t organisation = 0;
    uint16_t id = 0;
    std::optional<uint16_t> type;  ///< Absent if the source has no number for it.
    std::string control;           ///< "PRESENT", or the number of a code without a name.
    uint8_t visibility = 0;        ///< 3: viewers, 1: other applications only, 0: not visible.
    uint8_t priority = 0;
    std::string name;                    ///< The preferred name; empty if there is none.
    std::vector<ApplicationName> names;  ///< One for each language; the language is cleaned.
    std::string location;
    ReceiverConditions conditions{};     ///< All texts are UTF-8.
    std::vector<std::string> against{};  ///< Why it is not offered to viewers; empty if it is.

    bool operator==(const ListedApplication&) const = default;
};

/// Returns every application of a broadcast, offered or not, once for each service, in the order of
/// appearance. Each is described as in its last version.
std::vector<ListedApplication> ListApplications(const Broadcast& broadcast,
                                                const BroadcastFilter& filter);

}  // namespace applist::sim
