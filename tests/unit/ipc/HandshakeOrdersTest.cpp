// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Every order of handshake events with one, two and three partners. In each order, announcements
// are made, delivered late or in another order, repeated or lost, partners leave the bus, and the
// application's own names are refused. After every event the transport is compared with a model of
// the handshake. An order that breaks it is printed as a scenario for javamw-sim.
//
// Each state of model and bus is visited once, by a shortest order. APPLIST_ORDERS_DEPTH is the
// number of events; the default is 12 for one partner, 7 for two and 5 for three.
#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>
#include <optional>
#include <set>

#include <gtest/gtest.h>

#include "ipc/javamw-dbus-local.h"
#include "scenario/Statement.h"
#include "unit/ipc/HeldBus.h"

namespace applist::test {
namespace {

const std::string BASE = "org.vantu.JavaMW.Applist";

enum Step : size_t { SYN, SYN_ACK, ACK, STEPS };
constexpr std::array<const char*, STEPS> SUFFIXES{"_SYN", "_SYN_ACK", "_ACK"};
constexpr std::array<const char*, STEPS> STATEMENTS{"syn", "syn-ack", "ack"};

// The maximum number of copies of one announcement that the bus holds back.
constexpr int MOST_HELD = 2;

/// One event of an order.
struct Event {
    enum Kind { ANNOUNCE, DELIVER, REPEAT, LOSE, LEAVE, NOTICE, REFUSE };
    Kind kind;
    size_t partner = 0;
    Step step = SYN;
};
using Order = std::vector<Event>;

/// The model of one partner.
struct Partner {
    enum State { UNKNOWN, KNOWN, CONNECTED };
    State state = UNKNOWN;
    bool onTheBus = true;
    /// The partner has left the bus, but the bus has not reported this yet.
    bool noticeHeld = false;
    /// The transport has lost this partner before. Part of the state, because a faulty transport
    /// could have kept a record of it.
    bool wasLost = false;
    std::array<int, STEPS> held{};

    auto operator<=>(const Partner&) const = default;
};

std::string NameOf(size_t partner) {
    return ":1." + std::to_string(partner + 1);
}

/// A transport that records its reports. Sends a notification to a partner that connects, as the
/// application does with event 4.
class Channel : public JavaMWDbusLocal {
public:
    Channel() : JavaMWDbusLocal("Applist") {}
    void HandleConnectionReady(bool ready, const std::string& partner) override {
        reports.push_back((ready ? "connected " : "lost ") + partner);
        if (ready) {
            std::vector<char> event{4};
            SendNotification(event, partner);
        }
    }
    std::vector<std::string> reports;
};

/// The real transport and the model of it. Plays events on both and compares them.
class World {
public:
    explicit World(size_t partners) : m_partners(partners) {
        TheHeldBus() = HeldBus{};
        m_channel = std::make_unique<Channel>();
        TheHeldBus().TakeOwnedNames();
    }

    bool Allows(const Event& event) const;
    void Play(const Event& event);
    /// Returns what differs from the model; empty if nothing does.
    std::string Difference();
    /// Destroys the transport. Returns a description of leftovers on the bus; empty if there are
    /// none.
    std::string End();

    /// Equal for states that only differ in the partners' names.
    std::pair<std::vector<Partner>, bool> State() const {
        auto partners = m_partners;
        std::sort(partners.begin(), partners.end());
        return {partners, TheHeldBus().refusesNextName()};
    }

private:
    void Deliver(size_t partner, Step step);
    void Connect(size_t partner);
    void Answer(const char* suffix);
    std::string ResourcesOf(size_t partner) const;

    std::vector<Partner> m_partners;
    std::unique_ptr<Channel> m_channel;
    // What the model expects of the last event.
    std::vector<std::string> m_reports;
    std::vector<std::string> m_signals;
    std::vector<std::string> m_ownedNames;
};

bool World::Allows(const Event& event) const {
    const Partner& partner = m_partners[event.partner];
    switch (event.kind) {
        case Event::ANNOUNCE:
            return partner.onTheBus && partner.held[event.step] < MOST_HELD;
        case Event::DELIVER:
        case Event::REPEAT:
        case Event::LOSE:
            return partner.held[event.step] > 0;
        case Event::LEAVE:
            return partner.onTheBus;
        case Event::NOTICE:
            return partner.noticeHeld;
        case Event::REFUSE:
            return !TheHeldBus().refusesNextName();
    }
    return false;
}

void World::Play(const Event& event) {
    Partner& partner = m_partners[event.partner];
    switch (event.kind) {
        case Event::ANNOUNCE:
            ++partner.held[event.step];
            return;
        case Event::LOSE:
            --partner.held[event.step];
            return;
        case Event::DELIVER:
            --partner.held[event.step];
            Deliver(event.partner, event.step);
            return;
        case Event::REPEAT:
            Deliver(event.partner, event.step);
            return;
        case Event::LEAVE:
            partner.onTheBus = false;
            partner.noticeHeld = partner.state != Partner::UNKNOWN;
            return;
        case Event::NOTICE:
            partner.noticeHeld = false;
            partner.wasLost = true;
            partner.state = Partner::UNKNOWN;
            m_reports.push_back("lost " + NameOf(event.partner));
            TheHeldBus().Vanish(NameOf(event.partner));
            return;
        case Event::REFUSE:
            TheHeldBus().RefuseNextName();
            return;
    }
}

void World::Deliver(size_t index, Step step) {
    Partner& partner = m_partners[index];
    const bool unknown = partner.state == Partner::UNKNOWN;
    if (step == ACK && !unknown) {
        Connect(index);
    } else if (step != ACK && unknown) {
        Answer(step == SYN ? "_SERVICE_SYN_ACK" : "_SERVICE_ACK");
        partner.state = Partner::KNOWN;
        // The bus reports at once that a watched name does not exist.
        partner.noticeHeld = !partner.onTheBus;
        if (step == SYN_ACK) {
            Connect(index);
        }
    }
    TheHeldBus().Announce(BASE + "_CLIENT" + SUFFIXES[step], NameOf(index));
}

void World::Connect(size_t partner) {
    m_partners[partner].state = Partner::CONNECTED;
    m_reports.push_back("connected " + NameOf(partner));
    m_signals.push_back(NameOf(partner));
}

void World::Answer(const char* suffix) {
    if (!TheHeldBus().refusesNextName()) {
        m_ownedNames.push_back(BASE + suffix);
    }
}

std::string World::ResourcesOf(size_t partner) const {
    const HeldBus& bus = TheHeldBus();
    const std::string name = NameOf(partner);
    return std::to_string(bus.Watches(name)) + " watches, " + std::to_string(bus.Proxies(name)) +
           " proxies, " + std::to_string(bus.Subscriptions(name)) + " subscriptions";
}

std::string Joined(const std::vector<std::string>& texts) {
    std::string all;
    for (const std::string& text : texts) {
        all += (all.empty() ? "" : ", ") + text;
    }
    return all.empty() ? "nothing" : all;
}

std::string World::Difference() {
    // A notification to all must reach exactly the connected partners.
    std::vector<char> data{0};
    m_channel->SendNotification(data);
    for (size_t partner = 0; partner < m_partners.size(); ++partner) {
        if (m_partners[partner].state == Partner::CONNECTED) {
            m_signals.push_back(NameOf(partner));
        }
        const std::string expected = m_partners[partner].state == Partner::UNKNOWN
                                         ? "0 watches, 0 proxies, 0 subscriptions"
                                         : "1 watches, 1 proxies, 1 subscriptions";
        if (ResourcesOf(partner) != expected) {
            return NameOf(partner) + " has " + ResourcesOf(partner) + " instead of " + expected;
        }
    }
    const std::pair<std::vector<std::string>, std::vector<std::string>> pairs[] = {
        {std::exchange(m_channel->reports, {}), std::exchange(m_reports, {})},
        {TheHeldBus().TakeSignals(), std::exchange(m_signals, {})},
        {TheHeldBus().TakeOwnedNames(), std::exchange(m_ownedNames, {})}};
    const char* const subjects[] = {"reports", "sends to", "announces"};
    for (size_t i = 0; i < std::size(pairs); ++i) {
        const auto& [actual, expected] = pairs[i];
        if (actual != expected) {
            return std::string("the application ") + subjects[i] + " " + Joined(actual) +
                   " instead of " + Joined(expected);
        }
    }
    return "";
}

std::string World::End() {
    m_channel.reset();
    for (size_t partner = 0; partner < m_partners.size(); ++partner) {
        if (ResourcesOf(partner) != "0 watches, 0 proxies, 0 subscriptions") {
            return "at the end " + NameOf(partner) + " has " + ResourcesOf(partner);
        }
    }
    return "";
}

std::vector<Event> AllEvents(size_t partners) {
    std::vector<Event> events{{Event::REFUSE}};
    for (size_t partner = 0; partner < partners; ++partner) {
        for (const Step step : {SYN, SYN_ACK, ACK}) {
            for (const auto kind : {Event::ANNOUNCE, Event::DELIVER, Event::REPEAT, Event::LOSE}) {
                events.push_back({kind, partner, step});
            }
        }
        events.push_back({Event::LEAVE, partner});
        events.push_back({Event::NOTICE, partner});
    }
    return events;
}

// Returns the order as a scenario for javamw-sim. Contains only the events that reach the
// application.
std::string ScenarioOf(const Order& order) {
    std::string text;
    for (const Event& event : order) {
        const std::string partner = "partner p" + std::to_string(event.partner + 1) + "\n";
        switch (event.kind) {
            case Event::DELIVER:
            case Event::REPEAT:
                text += partner + "handshake manual\nannounce " + STATEMENTS[event.step] + "\n";
                break;
            case Event::NOTICE:
                text += partner + "vanish\n";
                break;
            case Event::REFUSE:
                text += "note \"Another program owns the next name of the application\"\n";
                break;
            default:
                break;
        }
    }
    return text;
}

/// Visits every state that up to depth events reach with this number of partners.
class Exploration {
public:
    Exploration(size_t partners, size_t depth) : m_partners(partners), m_depth(depth) {}

    /// Returns the order of the first difference and what differs; nothing if all orders are right.
    std::optional<std::pair<Order, std::string>> Run() {
        std::vector<Order> reached{{}};
        for (size_t depth = 0; depth < m_depth; ++depth) {
            std::vector<Order> next;
            for (const Order& order : reached) {
                if (auto fault = Extend(order, next)) {
                    return fault;
                }
            }
            reached = std::move(next);
        }
        return std::nullopt;
    }
    size_t states() const { return m_states.size(); }

private:
    std::optional<std::pair<Order, std::string>> Extend(const Order& order,
                                                        std::vector<Order>& next) {
        for (const Event& event : AllowedAfter(order)) {
            const auto world = After(order);
            world->Play(event);
            Order extended = order;
            extended.push_back(event);
            std::string fault = world->Difference();
            const bool isNew = m_states.insert(world->State()).second;
            fault = fault.empty() ? world->End() : fault;
            if (!fault.empty()) {
                return std::pair(extended, fault);
            }
            if (isNew) {
                next.push_back(std::move(extended));
            }
        }
        return std::nullopt;
    }
    std::unique_ptr<World> After(const Order& order) const {
        auto world = std::make_unique<World>(m_partners);
        for (const Event& event : order) {
            world->Play(event);
            world->Difference();
        }
        return world;
    }
    std::vector<Event> AllowedAfter(const Order& order) const {
        const auto world = After(order);
        std::vector<Event> events = AllEvents(m_partners);
        std::erase_if(events, [&](const Event& event) { return !world->Allows(event); });
        return events;
    }

    size_t m_partners;
    size_t m_depth;
    std::set<std::pair<std::vector<Partner>, bool>> m_states;
};

class HandshakeOrders : public testing::TestWithParam<std::pair<size_t, size_t>> {};

TEST_P(HandshakeOrders, ConnectEachPartnerAfterTheThreeStepsAndLeaveNothing) {
    const auto& [partners, usual] = GetParam();
    const char* depth = std::getenv("APPLIST_ORDERS_DEPTH");
    Exploration exploration(partners, depth != nullptr ? std::strtoul(depth, nullptr, 10) : usual);
    if (const auto fault = exploration.Run()) {
        ADD_FAILURE() << fault->second << "\n" << ScenarioOf(fault->first);
    }
    std::cout << exploration.states() << " states\n";
}

TEST(ACounterexample, IsAScenarioThatTheSimulatorPlays) {
    Order order;
    for (const Event& event : AllEvents(2)) {
        order.push_back(event);
    }
    EXPECT_TRUE(sim::ParseScenario(ScenarioOf(order)).errors.empty()) << ScenarioOf(order);
}

INSTANTIATE_TEST_SUITE_P(Partners, HandshakeOrders,
                         testing::Values(std::pair(1, 12), std::pair(2, 7), std::pair(3, 5)),
                         [](const auto& order) { return std::to_string(order.param.first); });

}  // namespace
}  // namespace applist::test
