// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "support/HandshakeModel.h"

#include <sstream>

#include "fakes/HeldBus.h"

namespace applist::test {
namespace {

const std::string BASE = "org.vantu.JavaMW.Applist";

// The maximum number of copies of one announcement that the bus holds back.
constexpr int MOST_HELD = 2;

}  // namespace

std::vector<HandshakeEvent> AllHandshakeEvents(size_t partners) {
    std::vector<HandshakeEvent> events{{HandshakeEvent::REFUSE}};
    for (size_t partner = 0; partner < partners; ++partner) {
        for (const auto step : {SYN, SYN_ACK, ACK}) {
            for (const auto kind : {HandshakeEvent::ANNOUNCE, HandshakeEvent::DELIVER,
                                    HandshakeEvent::REPEAT, HandshakeEvent::LOSE}) {
                events.push_back({kind, partner, step});
            }
        }
        events.push_back({HandshakeEvent::LEAVE, partner});
        events.push_back({HandshakeEvent::NOTICE, partner});
    }
    return events;
}

std::string HandshakeModel::AnnouncedName(HandshakeStep step) {
    constexpr std::array<const char*, HANDSHAKE_STEPS> SUFFIXES{"_SYN", "_SYN_ACK", "_ACK"};
    return BASE + "_CLIENT" + SUFFIXES[step];
}

bool HandshakeModel::Allows(const HandshakeEvent& event) const {
    const Partner& partner = m_partners[event.partner];
    switch (event.kind) {
        case HandshakeEvent::ANNOUNCE:
            return partner.onTheBus && partner.held[event.step] < MOST_HELD;
        case HandshakeEvent::DELIVER:
        case HandshakeEvent::REPEAT:
        case HandshakeEvent::LOSE:
            return partner.held[event.step] > 0;
        case HandshakeEvent::LEAVE:
            return partner.onTheBus;
        case HandshakeEvent::NOTICE:
            return partner.noticeHeld;
        case HandshakeEvent::REFUSE:
            return !TheHeldBus().refusesNextName();
    }
    return false;
}

void HandshakeModel::Play(const HandshakeEvent& event) {
    Partner& partner = m_partners[event.partner];
    switch (event.kind) {
        case HandshakeEvent::ANNOUNCE:
            ++partner.held[event.step];
            return;
        case HandshakeEvent::LOSE:
            --partner.held[event.step];
            return;
        case HandshakeEvent::DELIVER:
            --partner.held[event.step];
            Deliver(event.partner, event.step);
            return;
        case HandshakeEvent::REPEAT:
            Deliver(event.partner, event.step);
            return;
        case HandshakeEvent::LEAVE:
            partner.onTheBus = false;
            partner.noticeHeld = partner.state != Partner::UNKNOWN;
            return;
        case HandshakeEvent::NOTICE:
            partner.noticeHeld = false;
            partner.wasLost = true;
            partner.state = Partner::UNKNOWN;
            m_effects.reports.push_back("lost " + NameOf(event.partner));
            TheHeldBus().Vanish(NameOf(event.partner));
            return;
        case HandshakeEvent::REFUSE:
            TheHeldBus().RefuseNextName();
            return;
    }
}

void HandshakeModel::End() {
    m_ended = true;
    for (Partner& partner : m_partners) {
        partner.state = Partner::UNKNOWN;
        partner.noticeHeld = false;
    }
}

void HandshakeModel::Deliver(size_t index, HandshakeStep step) {
    Partner& partner = m_partners[index];
    const bool unknown = partner.state == Partner::UNKNOWN;
    if (step == ACK && !unknown) {
        Connect(index);
    } else if (step != ACK && unknown && !m_ended) {
        Answer(step == SYN ? "_SERVICE_SYN_ACK" : "_SERVICE_ACK");
        partner.state = Partner::KNOWN;
        // The bus reports at once that a watched name does not exist.
        partner.noticeHeld = !partner.onTheBus;
        if (step == SYN_ACK) {
            Connect(index);
        }
    }
    TheHeldBus().Announce(AnnouncedName(step), NameOf(index));
}

void HandshakeModel::Connect(size_t partner) {
    m_partners[partner].state = Partner::CONNECTED;
    m_effects.reports.push_back("connected " + NameOf(partner));
    m_effects.connected.push_back(NameOf(partner));
}

void HandshakeModel::Answer(const char* suffix) {
    if (!TheHeldBus().refusesNextName()) {
        m_effects.ownedNames.push_back(BASE + suffix);
    }
}

std::uint64_t HandshakeModel::State() const {
    std::uint64_t state = TheHeldBus().refusesNextName() ? 1 : 0;
    const auto append = [&state](std::uint64_t value, unsigned bits) {
        state = (state << bits) | value;
    };
    for (const Partner& partner : m_partners) {
        append(partner.state, 2);
        append(partner.onTheBus ? 1 : 0, 1);
        append(partner.noticeHeld ? 1 : 0, 1);
        append(partner.wasLost ? 1 : 0, 1);
        for (const int held : partner.held) {
            append(static_cast<std::uint64_t>(held), 2);
        }
    }
    return state;
}

std::vector<std::string> HandshakeModel::Connected() const {
    std::vector<std::string> names;
    for (size_t partner = 0; partner < m_partners.size(); ++partner) {
        if (m_partners[partner].state == Partner::CONNECTED) {
            names.push_back(NameOf(partner));
        }
    }
    return names;
}

std::string HandshakeModel::ResourcesDifference() const {
    const HeldBus& bus = TheHeldBus();
    for (size_t partner = 0; partner < m_partners.size(); ++partner) {
        const std::string name = NameOf(partner);
        const size_t expected = m_partners[partner].state == Partner::UNKNOWN ? 0 : 1;
        const std::pair<const char*, size_t> resources[] = {
            {"watches", bus.Watches(name)},
            {"proxies", bus.Proxies(name)},
            {"subscriptions", bus.Subscriptions(name)}};
        for (const auto& [kind, count] : resources) {
            if (count != expected) {
                std::ostringstream text;
                text << name << " has " << count << ' ' << kind << " instead of " << expected;
                return text.str();
            }
        }
    }
    return "";
}

}  // namespace applist::test
