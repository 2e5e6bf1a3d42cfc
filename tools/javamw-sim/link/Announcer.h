// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <string>

#include "link/GioHandles.h"
#include "link/Handshake.h"

namespace applist::sim {

/// Makes the middleware's announcements on a connection: as planned, one after the other, and again
/// where another middleware is in the way. Runs on the thread of the default main context.
class Announcer {
public:
    struct Listener {
        std::function<void(const std::string& error)> failed;
        /// The policy of the bus does not allow the announcement.
        std::function<void(const std::string& error)> denied;
        /// An announcement that the plan delays was made.
        std::function<void()> late;
    };

    /// connection must outlive the announcer.
    Announcer(GDBusConnection* connection, Listener listener, const HandshakePlan& plan);

    /// How announcements are made from here on.
    void SetPlan(const HandshakePlan& plan) { m_plan = plan; }
    /// Announces as the plan has it. False if that is not at once: late, or not at all.
    bool AnnounceAsPlanned(Announcement announcement);
    /// Announces whatever the plan says.
    void AnnounceNow(Announcement announcement);
    /// Gives up what has not been announced yet.
    void Stop();

private:
    struct Queued {
        std::string name;
        unsigned tries = 0;
    };
    void AnnounceTimes(Announcement announcement, unsigned times);
    void AnnounceQueued();
    void OnDelayed(Announcement announcement);
    static int cb_AnnounceAgain(void* announcer) noexcept;
    template <Announcement announcement>
    static int cb_Delayed(void* announcer) noexcept;

    GDBusConnection* m_connection;
    Listener m_listener;
    HandshakePlan m_plan;
    std::deque<Queued> m_queue;
    Registration m_again;
    std::map<Announcement, Registration> m_delayed;
};

}  // namespace applist::sim
