// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "broadcast/Broadcast.h"

namespace applist::sim {

/// Divides a sequence of tables into snapshots.
///
/// Tables are repeated periodically, so a reader needs some time until it has seen each of them.
/// All tables before the first new version belong to the first snapshot. If there is a clock, the
/// first snapshot ends after ten seconds, in which every table must have been repeated (TS 102 809,
/// 5.3.4).
class Timeline {
public:
    /// Returns the services at the time of the call.
    using State = std::function<std::vector<BroadcastService>()>;

    /// damage must outlive the timeline.
    Timeline(State state, Damage& damage);

    /// Applies change. replaces is true if the table replaces another version.
    void Change(bool replaces, std::optional<double> seconds, const std::function<void()>& change);

    /// REQUIRES: Change() is not called any more.
    std::vector<Snapshot> Finish();

private:
    void EndFirstSnapshot();
    void Record(std::optional<double> seconds);

    State m_state;
    Damage& m_damage;
    bool m_inFirstSnapshot = true;
    std::optional<double> m_start;
    std::vector<Snapshot> m_snapshots;
};

}  // namespace applist::sim
