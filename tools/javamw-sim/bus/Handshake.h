// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace applist::sim {

/// The three announcements of a handshake; each side makes them under names of its own.
enum class Announcement { Syn, SynAck, Ack };

inline constexpr std::array ANNOUNCEMENTS{Announcement::Syn, Announcement::SynAck,
                                          Announcement::Ack};

/// "syn", "syn-ack", "ack".
std::string_view NameOf(Announcement announcement);

/// What is to be done, in this order, when an announcement was heard or a partner was lost.
struct HandshakeStep {
    bool lost = false;                   ///< The partner as known so far is gone.
    bool establish = false;              ///< Watch the partner and listen to its signals.
    std::optional<Announcement> answer;  ///< Announce this.
    bool connected = false;              ///< The partner is connected from now on.

    bool operator==(const HandshakeStep&) const = default;
};

/// The middleware's half of the three-way handshake, for any number of applications: decisions
/// only, no bus.
///
///  - application starts later: SYN heard, SYN_ACK answered, ACK heard.
///  - application runs already: our SYN, SYN_ACK heard, ACK answered.
///  - both start at once: SYN heard and SYN_ACK answered, which the application ignores since it
///    has heard our SYN; its SYN_ACK to that comes next and the ACK to it completes both.
class Handshake {
public:
    /// partner announced that, under its unique bus name.
    HandshakeStep Heard(Announcement announcement, const std::string& partner);

    /// partner left the bus.
    HandshakeStep Lost(const std::string& partner);

    bool IsConnected(const std::string& partner) const;

private:
    enum class State {
        SynAckSent,
        AckHeard,  ///< Connected, unless the ACK answered some other middleware.
        AckSent,   ///< Connected.
    };
    HandshakeStep HeardSyn(const std::string& partner);
    HandshakeStep HeardSynAck(const std::string& partner);
    HandshakeStep HeardAck(const std::string& partner);

    std::map<std::string, State> m_partners;
};

}  // namespace applist::sim
