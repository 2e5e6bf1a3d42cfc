// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "link/Handshake.h"

namespace applist::sim {

std::string_view NameOf(Announcement announcement) {
    constexpr std::array<std::string_view, ANNOUNCEMENTS.size()> NAMES{"syn", "syn-ack", "ack"};
    return NAMES.at(static_cast<size_t>(announcement));
}

HandshakeStep Handshake::Heard(Announcement announcement, const std::string& application) {
    switch (announcement) {
        case Announcement::Syn:
            return HeardSyn(application);
        case Announcement::SynAck:
            return HeardSynAck(application);
        case Announcement::Ack:
            return HeardAck(application);
    }
    return {};
}

HandshakeStep Handshake::Lost(const std::string& application) {
    const bool wasConnected = IsConnected(application);
    m_applications.erase(application);
    return {.lost = wasConnected};
}

bool Handshake::IsConnected(const std::string& application) const {
    const auto found = m_applications.find(application);
    return found != m_applications.end() && found->second != State::SynAckSent;
}

// An application sends SYN once in its life. A known application that sends it again has recreated
// its channel on the same bus connection, so the handshake starts again.
HandshakeStep Handshake::HeardSyn(const std::string& application) {
    HandshakeStep step = Lost(application);
    m_applications[application] = State::SynAckSent;
    step.establish = true;
    step.answer = Announcement::SynAck;
    return step;
}

// Announcements are broadcast. One that arrives after our ACK answers another middleware. An ACK
// that we received may also belong to another middleware; then the application still waits for
// ours.
HandshakeStep Handshake::HeardSynAck(const std::string& application) {
    const auto known = m_applications.find(application);
    if (known != m_applications.end() && known->second == State::AckSent) {
        return {};
    }
    const HandshakeStep step{.establish = known == m_applications.end(),
                             .answer = Announcement::Ack,
                             .connected = !IsConnected(application)};
    m_applications[application] = State::AckSent;
    return step;
}

HandshakeStep Handshake::HeardAck(const std::string& application) {
    const auto found = m_applications.find(application);
    if (found == m_applications.end() || found->second != State::SynAckSent) {
        return {};
    }
    found->second = State::AckHeard;
    return {.connected = true};
}

}  // namespace applist::sim
