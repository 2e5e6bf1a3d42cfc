// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

/// The handshake of the application with several partners, as docs/protocol.md describes it, to
/// compare a transport on TheHeldBus() with.
namespace applist::test {

enum HandshakeStep : std::size_t { SYN, SYN_ACK, ACK, HANDSHAKE_STEPS };

/// An event on the bus. Announcements are made, and then delivered, repeated or lost. Partners
/// leave the bus, which is noticed later. The next name of the application is refused.
struct HandshakeEvent {
    enum Kind { ANNOUNCE, DELIVER, REPEAT, LOSE, LEAVE, NOTICE, REFUSE };
    Kind kind;
    std::size_t partner = 0;
    HandshakeStep step = SYN;
};

/// All events with this number of partners.
std::vector<HandshakeEvent> AllHandshakeEvents(std::size_t partners);

/// Plays events on TheHeldBus() and keeps what the application must do.
class HandshakeModel {
public:
    struct Partner {
        enum State { UNKNOWN, KNOWN, CONNECTED };
        State state = UNKNOWN;
        bool onTheBus = true;
        /// The partner has left the bus, but the bus has not reported this yet.
        bool noticeHeld = false;
        /// The transport has lost this partner before. Part of the state, because a faulty
        /// transport could have kept a record of it.
        bool wasLost = false;
        /// The announcements that the bus holds back.
        std::array<int, HANDSHAKE_STEPS> held{};
    };
    /// What the application must have done since the last call of Take().
    struct Effects {
        /// The partners that connected.
        std::vector<std::string> connected;
        /// "connected :1.1", "lost :1.1".
        std::vector<std::string> reports;
        std::vector<std::string> ownedNames;
    };

    explicit HandshakeModel(std::size_t partners) : m_partners(partners) {}

    bool Allows(const HandshakeEvent& event) const;
    void Play(const HandshakeEvent& event);
    /// The application has ended: it has no partners and must not do anything any more.
    void End();
    Effects Take() { return std::exchange(m_effects, {}); }

    const std::vector<Partner>& partners() const { return m_partners; }
    /// Returns the state of at most five partners and of the bus. Differs for two different states.
    std::uint64_t State() const;
    /// The names of the connected partners, sorted.
    std::vector<std::string> Connected() const;
    /// Returns how the bus' watches, proxies and subscriptions differ from those that the partners
    /// must have; empty if they do not.
    std::string ResourcesDifference() const;

    static std::string NameOf(std::size_t partner) { return ":1." + std::to_string(partner + 1); }
    /// The name that a partner owns for a moment to announce a step.
    static std::string AnnouncedName(HandshakeStep step);

private:
    void Deliver(std::size_t partner, HandshakeStep step);
    void Connect(std::size_t partner);
    void Answer(const char* suffix);

    std::vector<Partner> m_partners;
    Effects m_effects;
    bool m_ended = false;
};

}  // namespace applist::test
