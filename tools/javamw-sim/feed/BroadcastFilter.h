// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "broadcast/Broadcast.h"
#include "link/Protocol.h"

namespace applist::sim {

/// Selects applications of a broadcast and the language of their names.
struct BroadcastFilter {
    std::vector<std::string> services;   ///< Numbers or names; empty for all.
    std::vector<std::string> languages;  ///< Languages of names, the preferred one first.
    bool all = false;                    ///< Includes hidden applications and those for trials.
};

/// Returns why the broadcast does not offer the application to the viewer; nothing if it does. With
/// all, neither a hidden application nor one for trials is a reason.
std::vector<std::string> ReasonsAgainst(const ApplicationTable& table,
                                        const Application& application, bool all);

/// True iff the broadcast offers the application to the viewer. With all, hidden applications and
/// those for trials count as offered.
bool IsOffered(const ApplicationTable& table, const Application& application, bool all);

/// Returns the selected services of a snapshot in the order of the broadcast.
std::vector<BroadcastService> SelectServices(const Snapshot& snapshot,
                                             const BroadcastFilter& filter);

/// Returns an empty string if each selected service exists in some snapshot. Otherwise returns
/// which one is missing and which ones exist.
std::string MissingService(const Broadcast& broadcast, const BroadcastFilter& filter);

/// Returns the applications that a snapshot offers to the viewer, as items of the list: AUTOSTART
/// and PRESENT ones in the order of services and tables.
///
/// If several services offer one application under the same name, it becomes one item. If they use
/// different names, each name becomes an item; the ids of all but the first end in "@SERVICE". If
/// different applications have the same name, all but the first get a number: "News (2)". An
/// application without a readable name gets its id as its name.
Items OfferedItems(const Snapshot& snapshot, const BroadcastFilter& filter);

}  // namespace applist::sim
