// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <string>

#include "GlibHandles.h"
#include "link/Handshake.h"

namespace applist::sim {

/// Makes the announcements of the middleware on a connection, one after the other according to a
/// plan. Retries while another middleware owns the name. Runs on the thread of the default main
/// context.
class Announcer {
public:
    struct Listener {
        /// denied means that the policy of the bus does not allow the announcement.
        std::function<void(bool denied, const std::string& error)> failed;
        /// A delayed announcement was made.
        std::function<void()> late;
    };

    /// connection must outlive the announcer.
    Announcer(GDBusConnection* connection, Listener listener, const HandshakePlan& plan);

    /// Sets the plan for the following announcements.
    void SetPlan(const HandshakePlan& plan) { m_plan = plan; }
    /// Announces according to the plan. Returns false if the announcement is delayed or skipped.
    bool AnnounceAsPlanned(Announcement announcement);
    /// Announces now and ignores the plan.
    void AnnounceNow(Announcement announcement);
    /// Drops the announcements that are still pending.
    void Stop();

private:
    struct Queued {
        std::string name;
        unsigned tries = 0;
    };
    void AnnounceTimes(Announcement announcement, unsigned times);
    void AnnounceQueued();
    void OnDelayed(Announcement announcement);

    GDBusConnection* m_connection;
    Listener m_listener;
    HandshakePlan m_plan;
    std::deque<Queued> m_queue;
    Registration m_again;
    std::map<Announcement, Registration> m_delayed;
};

}  // namespace applist::sim
