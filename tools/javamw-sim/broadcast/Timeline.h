// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "broadcast/Broadcast.h"

namespace applist::sim {

/// Divides what tables say one after the other into snapshots.
///
/// Tables are repeated in turn, so a reader that starts anywhere needs a while to have seen each
/// once. All that comes before the first new version makes up the first snapshot, where there is a
/// clock within the ten seconds after which every table has been repeated (TS 102 809, 5.3.4).
class Timeline {
public:
    /// The services as they are at the time of the call.
    using State = std::function<std::vector<BroadcastService>()>;

    /// damage must outlive the timeline.
    Timeline(State state, Damage& damage);

    /// Carries out change, which a table brings that replaces another or not.
    void Change(bool replaces, std::optional<double> seconds, const std::function<void()>& change);

    /// REQUIRES: no change comes any more.
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
