// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "broadcast/Timeline.h"

#include <algorithm>
#include <utility>

namespace applist::sim {
namespace {

// ETSI TS 102 809, 5.3.4: every table must have been repeated within this period.
constexpr double FIRST_MOMENT_S = 10;
// Far more than any real recording; beyond it the stream is assumed to be hostile.
constexpr size_t MAX_MOMENTS = 1000;

bool SameTables(const BroadcastService& one, const BroadcastService& other) {
    return std::ranges::equal(one.tables, other.tables,
                              // Equal pointers spare the comparison of the contents.
                              [](const auto& a, const auto& b) { return a == b || *a == *b; });
}

// Names are left out, because they are those of the whole recording.
bool SameServices(const std::vector<BroadcastService>& one,
                  const std::vector<BroadcastService>& other) {
    return std::ranges::equal(one, other, [](const BroadcastService& a, const BroadcastService& b) {
        return a.id == b.id && SameTables(a, b);
    });
}

}  // namespace

void Timeline::Change(Snapshot snapshot, bool replaces) {
    if (!m_start) {
        m_start = snapshot.seconds;
    }
    const bool late = snapshot.seconds && *snapshot.seconds - *m_start > FIRST_MOMENT_S;
    // The first snapshot must be recorded before the change takes effect.
    if (replaces || late) {
        EndFirstSnapshot();
    }
    for (const BroadcastService& service : snapshot.services) {
        if (!service.name.empty()) {
            m_names[service.id.value_or(0)] = service.name;
        }
    }
    m_current = std::move(snapshot);
    if (!m_inFirstSnapshot) {
        Record();
    }
}

Broadcast Timeline::Finish(Damage damage) {
    EndFirstSnapshot();
    for (Snapshot& snapshot : m_snapshots) {
        for (BroadcastService& service : snapshot.services) {
            service.name = m_names[service.id.value_or(0)];
        }
    }
    damage.surplusChanges = m_surplus;
    return {std::move(m_snapshots), std::move(damage)};
}

void Timeline::EndFirstSnapshot() {
    if (m_inFirstSnapshot) {
        m_inFirstSnapshot = false;
        m_current.seconds = 0;
        Record();
    }
}

void Timeline::Record() {
    if (!m_snapshots.empty() && SameServices(m_snapshots.back().services, m_current.services)) {
        return;
    }
    // The loss is counted, so that the user sees that changes are missing.
    if (m_snapshots.size() == MAX_MOMENTS) {
        ++m_surplus;
    } else {
        m_snapshots.push_back(m_current);
    }
}

}  // namespace applist::sim
