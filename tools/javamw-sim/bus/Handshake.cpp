// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "bus/Handshake.h"

namespace applist::sim {

std::string_view NameOf(Announcement announcement) {
    constexpr std::array<std::string_view, ANNOUNCEMENTS.size()> NAMES{"syn", "syn-ack", "ack"};
    return NAMES.at(static_cast<size_t>(announcement));
}

HandshakeStep Handshake::Heard(Announcement announcement, const std::string& partner) {
    switch (announcement) {
        case Announcement::Syn:
            return HeardSyn(partner);
        case Announcement::SynAck:
            return HeardSynAck(partner);
        case Announcement::Ack:
            return HeardAck(partner);
    }
    return {};
}

HandshakeStep Handshake::Lost(const std::string& partner) {
    const bool wasConnected = IsConnected(partner);
    m_partners.erase(partner);
    return {.lost = wasConnected, .establish = false, .answer = std::nullopt, .connected = false};
}

bool Handshake::IsConnected(const std::string& partner) const {
    const auto found = m_partners.find(partner);
    return found != m_partners.end() && found->second != State::SynAckSent;
}

// A partner announces itself once in its life: when a known one does it again it has begun a new
// one on the same bus connection and remembers nothing of us.
HandshakeStep Handshake::HeardSyn(const std::string& partner) {
    HandshakeStep step = Lost(partner);
    m_partners[partner] = State::SynAckSent;
    step.establish = true;
    step.answer = Announcement::SynAck;
    return step;
}

// Announcements reach everybody. One heard after our ACK answers some other middleware; but an ACK
// that we heard may have been another's too, and then the application still waits for ours.
HandshakeStep Handshake::HeardSynAck(const std::string& partner) {
    const auto known = m_partners.find(partner);
    if (known != m_partners.end() && known->second == State::AckSent) {
        return {};
    }
    const HandshakeStep step{.lost = false,
                             .establish = known == m_partners.end(),
                             .answer = Announcement::Ack,
                             .connected = !IsConnected(partner)};
    m_partners[partner] = State::AckSent;
    return step;
}

HandshakeStep Handshake::HeardAck(const std::string& partner) {
    const auto found = m_partners.find(partner);
    if (found == m_partners.end() || found->second != State::SynAckSent) {
        return {};
    }
    found->second = State::AckHeard;
    return {.lost = false, .establish = false, .answer = std::nullopt, .connected = true};
}

}  // namespace applist::sim
