// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "broadcast/Broadcast.h"
#include "link/Protocol.h"

namespace applist::sim {

/// What of a broadcast is wanted, and how it is to be read.
struct BroadcastFilter {
    std::vector<std::string> services;   ///< By number or name; empty for all.
    std::vector<std::string> languages;  ///< Of names, the preferred one first.
    bool all = false;  ///< Hidden applications and those of trials are wanted, too.
};

/// True iff the broadcast offers the application to the viewer; with all, hidden applications and
/// those of tables for trials count as offered, too.
bool IsOffered(const ApplicationTable& table, const Application& application, bool all);

/// The services of a snapshot that are wanted, in the order of the broadcast.
std::vector<BroadcastService> SelectServices(const Snapshot& snapshot,
                                             const BroadcastFilter& filter);

/// Empty when each service that is wanted is there at some snapshot; otherwise which one is not,
/// and which there are.
std::string MissingService(const Broadcast& broadcast, const BroadcastFilter& filter);

/// The applications that a snapshot offers to the viewer, as items of the list: AUTOSTART and
/// PRESENT ones in the order in which services and tables name them.
///
/// An application that several services offer under one name is one item; where its name differs
/// there, each name is one, with "@" and the service behind the id. Different applications of one
/// name get a number behind it. An application without a readable name goes by its id.
Items OfferedItems(const Snapshot& snapshot, const BroadcastFilter& filter);

}  // namespace applist::sim
