// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace applist::sim {

/// The three announcements of a handshake. Each side has its own names for them.
enum class Announcement { Syn, SynAck, Ack };

inline constexpr std::array ANNOUNCEMENTS{Announcement::Syn, Announcement::SynAck,
                                          Announcement::Ack};

/// Returns "syn", "syn-ack" or "ack".
std::string_view NameOf(Announcement announcement);

/// How a middleware makes one of its announcements.
struct AnnouncementPlan {
    unsigned times = 1;  ///< 0 to skip it.
    std::chrono::milliseconds delay{};
};

/// How a middleware makes all of its announcements. The defaults follow the protocol.
struct HandshakePlan {
    std::array<AnnouncementPlan, ANNOUNCEMENTS.size()> steps{};

    AnnouncementPlan& operator[](Announcement announcement) {
        return steps.at(static_cast<size_t>(announcement));
    }
};

/// What to do, in this order, after an announcement was heard or an application was lost.
struct HandshakeStep {
    bool lost = false;                     ///< The application has left in its former life.
    bool establish = false;                ///< Watch the application and listen to its signals.
    std::optional<Announcement> answer{};  ///< Announce this.
    bool connected = false;                ///< The application is connected from now on.

    bool operator==(const HandshakeStep&) const = default;
};

/// Decides the middleware's half of the three-way handshake with any number of applications. Does
/// not use the bus.
///
///  - application starts later: SYN heard, SYN_ACK answered, ACK heard.
///  - application runs already: our SYN, SYN_ACK heard, ACK answered.
///  - both start at once: SYN heard and SYN_ACK answered. The application ignores that answer,
///    because it has heard our SYN. Its own SYN_ACK follows, and our ACK to it completes both
///    sides.
class Handshake {
public:
    /// Called when application, a unique bus name, made the announcement.
    HandshakeStep Heard(Announcement announcement, const std::string& application);

    /// Called when application left the bus.
    HandshakeStep Lost(const std::string& application);

    bool IsConnected(const std::string& application) const;

private:
    enum class State {
        SynAckSent,
        AckHeard,  ///< Connected, unless the ACK answered another middleware.
        AckSent,   ///< Connected.
    };
    HandshakeStep HeardSyn(const std::string& application);
    HandshakeStep HeardSynAck(const std::string& application);
    HandshakeStep HeardAck(const std::string& application);

    std::map<std::string, State> m_applications;
};

}  // namespace applist::sim
