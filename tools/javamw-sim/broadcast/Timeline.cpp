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
    return std::equal(one.tables.begin(), one.tables.end(), other.tables.begin(),
                      other.tables.end(),
                      // Equal pointers spare the comparison of the contents.
                      [](const auto& a, const auto& b) { return a == b || *a == *b; });
}

bool SameServices(const std::vector<BroadcastService>& one,
                  const std::vector<BroadcastService>& other) {
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [](const BroadcastService& a, const BroadcastService& b) {
                          return a.id == b.id && a.name == b.name && SameTables(a, b);
                      });
}

}  // namespace

Timeline::Timeline(State state, Damage& damage) : m_state(std::move(state)), m_damage(damage) {}

void Timeline::Change(bool replaces, std::optional<double> seconds,
                      const std::function<void()>& change) {
    if (!m_start) {
        m_start = seconds;
    }
    const bool late = seconds && *seconds - *m_start > FIRST_MOMENT_S;
    // The first snapshot must be recorded before the change modifies the state.
    if (replaces || late) {
        EndFirstSnapshot();
    }
    change();
    if (!m_inFirstSnapshot) {
        Record(seconds);
    }
}

std::vector<Snapshot> Timeline::Finish() {
    EndFirstSnapshot();
    return std::move(m_snapshots);
}

void Timeline::EndFirstSnapshot() {
    if (m_inFirstSnapshot) {
        Record(0);
        m_inFirstSnapshot = false;
    }
}

void Timeline::Record(std::optional<double> seconds) {
    auto services = m_state();
    if (!m_snapshots.empty() && SameServices(m_snapshots.back().services, services)) {
        return;
    }
    // The loss is counted, so that the user sees that changes are missing.
    if (m_snapshots.size() == MAX_MOMENTS) {
        ++m_damage.surplusChanges;
        return;
    }
    m_snapshots.push_back({seconds, std::move(services)});
}

}  // namespace applist::sim
