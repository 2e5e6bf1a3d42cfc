// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "link/Announcer.h"

#include <utility>

#include "link/ChannelNames.h"
#include "link/Connection.h"

namespace applist::sim {
namespace {

// Interval of retries while another middleware owns the name.
constexpr std::chrono::milliseconds AGAIN{2};
// With the interval above, an announcement fails after about a second.
constexpr unsigned MOST_TRIES = 500;

}  // namespace

Announcer::Announcer(GDBusConnection* connection, Listener listener, const HandshakePlan& plan)
    : m_connection(connection), m_listener(std::move(listener)), m_plan(plan) {}

bool Announcer::AnnounceAsPlanned(Announcement announcement) {
    const AnnouncementPlan plan = m_plan[announcement];
    if (plan.delay.count() == 0) {
        AnnounceTimes(announcement, plan.times);
        return plan.times > 0;
    }
    m_delayed[announcement] =
        RunAfter(plan.delay, [this, announcement] { OnDelayed(announcement); });
    return false;
}

void Announcer::AnnounceNow(Announcement announcement) {
    AnnounceTimes(announcement, 1);
}

void Announcer::Stop() {
    m_again.Release();
    m_delayed.clear();
    m_queue.clear();
}

void Announcer::AnnounceTimes(Announcement announcement, unsigned times) {
    // A queue that is not empty is already being sent, or waits for a retry.
    const bool idle = m_queue.empty();
    for (unsigned i = 0; i < times; ++i) {
        m_queue.push_back({names::NameOf(names::CLIENT, announcement), 0});
    }
    if (idle) {
        AnnounceQueued();
    }
}

// Keeps the order, because an application must receive our SYN before the ACK that follows from it.
void Announcer::AnnounceQueued() {
    while (!m_queue.empty()) {
        Queued& first = m_queue.front();
        const AnnounceResult result = AnnounceName(m_connection, first.name);
        using Code = AnnounceResult::Code;
        if (result.code == Code::Taken && ++first.tries < MOST_TRIES) {
            // The announcement stays first in the queue, so later ones wait for it.
            m_again = RunAfter(AGAIN, [this] { AnnounceQueued(); });
            return;
        }
        if (result.code != Code::Announced) {
            (result.code == Code::Denied ? m_listener.denied
                                         : m_listener.failed)("cannot announce " + result.error);
        }
        m_queue.pop_front();
    }
}

void Announcer::OnDelayed(Announcement announcement) {
    const unsigned times = m_plan[announcement].times;
    AnnounceTimes(announcement, times);
    if (times > 0) {
        m_listener.late();
    }
}

}  // namespace applist::sim
