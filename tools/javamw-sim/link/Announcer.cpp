// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "link/Announcer.h"

#include <utility>

#include "link/Connection.h"
#include "link/Protocol.h"

namespace applist::sim {
namespace {

// Interval of retries while another middleware owns the name.
constexpr std::chrono::milliseconds AGAIN{2};
// With the interval above, an announcement fails after about a second.
constexpr unsigned MOST_TRIES = 500;

enum class AnnounceResult {
    Announced,
    Taken,   ///< Another connection owns the name at this moment; a later try will succeed.
    Denied,  ///< The policy of the bus does not allow this connection to own the name.
    Failed,
};

// Flag of RequestName and its reply code for success, as the D-Bus protocol numbers them.
constexpr unsigned DO_NOT_QUEUE = 4;
constexpr unsigned PRIMARY_OWNER = 1;

// Owns name for an instant, so that listeners learn the unique name of this connection from the
// release. Blocks for two calls to the bus daemon. The request is not queued. A queued request
// would take the name over as soon as its owner releases it, and listeners would never see that
// release. Sets problem unless announced.
AnnounceResult AnnounceName(GDBusConnection* connection, const std::string& name,
                            std::string& problem) {
    GError* error = nullptr;
    const auto claimed =
        CallDaemon(connection, DAEMON, "RequestName",
                   g_variant_new("(su)", name.c_str(), DO_NOT_QUEUE), "(u)", &error);
    if (!claimed) {
        const bool denied = g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_ACCESS_DENIED) != 0;
        problem = name + ": " + TakeMessage(error);
        return denied ? AnnounceResult::Denied : AnnounceResult::Failed;
    }
    unsigned code = 0;
    g_variant_get(claimed.get(), "(u)", &code);
    if (code != PRIMARY_OWNER) {
        problem = name + ": the name already has an owner";
        return AnnounceResult::Taken;
    }
    if (!CallDaemon(connection, DAEMON, "ReleaseName", g_variant_new("(s)", name.c_str()), "(u)",
                    &error)) {
        problem = name + ": " + TakeMessage(error);
        return AnnounceResult::Failed;
    }
    return AnnounceResult::Announced;
}

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
        std::string problem;
        const AnnounceResult result = AnnounceName(m_connection, first.name, problem);
        if (result == AnnounceResult::Taken && ++first.tries < MOST_TRIES) {
            // The announcement stays first in the queue, so later ones wait for it.
            m_again = RunAfter(AGAIN, [this] { AnnounceQueued(); });
            return;
        }
        if (result != AnnounceResult::Announced) {
            m_listener.failed(result == AnnounceResult::Denied, "cannot announce " + problem);
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
