// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <optional>
#include <string>

#include "broadcast/Broadcast.h"

namespace applist::sim {

/// Divides what a parser reports of a recording into snapshots.
///
/// Tables are repeated periodically, so a reader needs some time until it has seen each of them.
/// All tables before the first new version belong to the first snapshot. If there is a clock, the
/// first snapshot ends after ten seconds, in which every table must have been repeated (TS 102 809,
/// 5.3.4). All snapshots get the last name of each service, which may arrive after its tables.
class Timeline {
public:
    /// As a SnapshotHandler.
    void Change(Snapshot snapshot, bool replaces);

    /// Returns the snapshots, at least one, and damage with the changes that were left out.
    /// REQUIRES: Change() is not called any more.
    Broadcast Finish(Damage damage);

private:
    void EndFirstSnapshot();
    void Record();

    bool m_inFirstSnapshot = true;
    std::optional<double> m_start;
    Snapshot m_current;
    std::map<uint16_t, std::string> m_names;  ///< By service.
    std::vector<Snapshot> m_snapshots;
    size_t m_surplus = 0;
};

}  // namespace applist::sim
