// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Every order of handshake events with one, two and three partners. In each order, announcements
// are made, delivered late or in another order, repeated or lost, partners leave the bus, and the
// application's own names are refused. After every event the transport is compared with a model of
// the handshake. An order that breaks it is printed as a scenario for javamw-sim.
//
// Each state of model and bus is visited once, by a shortest order. APPLIST_ORDERS_DEPTH is the
// number of events; the default is 12 for one and two partners and 7 for three.
#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>
#include <set>
#include <unordered_set>

#include <gtest/gtest.h>

#include "fakes/HeldBus.h"
#include "ipc/javamw-dbus-local.h"
#include "scenario/Statement.h"
#include "support/HandshakeModel.h"

namespace applist::test {
namespace {

using Event = HandshakeEvent;
using Order = std::vector<Event>;
using Partner = HandshakeModel::Partner;

constexpr std::array<const char*, HANDSHAKE_STEPS> STATEMENTS{"syn", "syn-ack", "ack"};

using Reports = std::vector<std::string>;

/// A fault of the application: true if it forgets event 4 for the last of its reports.
using Fault = bool (*)(const Reports& reports);

/// A transport that records its reports. Sends a notification to a partner that connects, as the
/// application does with event 4.
class Channel : public JavaMWDbusLocal {
public:
    explicit Channel(Fault fault) : JavaMWDbusLocal("Applist"), m_fault(fault) {}
    void HandleConnectionReady(bool ready, const std::string& partner) override {
        m_reports.push_back((ready ? "connected " : "lost ") + partner);
        if (ready && !(m_fault != nullptr && m_fault(m_reports))) {
            std::vector<char> event{4};
            SendNotification(event, partner);
        }
    }
    /// Returns the reports since the last call.
    Reports TakeReports() {
        const auto first = m_reports.begin() + static_cast<ptrdiff_t>(m_taken);
        m_taken = m_reports.size();
        return {first, m_reports.end()};
    }

private:
    Fault m_fault;
    Reports m_reports;
    size_t m_taken = 0;
};

/// The real transport and the model of it. Plays events on both and compares them.
class World {
public:
    World(size_t partners, Fault fault) : m_model(partners) {
        TheHeldBus() = HeldBus{};
        m_channel = std::make_unique<Channel>(fault);
        TheHeldBus().TakeOwnedNames();
    }

    void Play(const Event& event) { m_model.Play(event); }
    /// Returns what differs from the model; empty if nothing does.
    std::string Difference();
    /// Destroys the transport. Returns a description of leftovers on the bus; empty if there are
    /// none.
    std::string End();

    const HandshakeModel& model() const { return m_model; }

private:
    HandshakeModel m_model;
    std::unique_ptr<Channel> m_channel;
};

std::string Joined(const std::vector<std::string>& texts) {
    std::string all;
    for (const std::string& text : texts) {
        all += (all.empty() ? "" : ", ") + text;
    }
    return all.empty() ? "nothing" : all;
}

std::string World::Difference() {
    HandshakeModel::Effects expected = m_model.Take();
    std::vector<std::string> signals;
    for (const std::string& partner : expected.connected) {
        signals.push_back(partner + " 04");
    }
    // A notification to all must reach exactly the connected partners.
    std::vector<char> data{0};
    m_channel->SendNotification(data);
    for (const std::string& partner : m_model.Connected()) {
        signals.push_back(partner + " 00");
    }
    if (std::string resources = m_model.ResourcesDifference(); !resources.empty()) {
        return resources;
    }
    const std::pair<std::vector<std::string>, std::vector<std::string>> pairs[] = {
        {m_channel->TakeReports(), expected.reports},
        {TheHeldBus().TakeSignals(), signals},
        {TheHeldBus().TakeOwnedNames(), expected.ownedNames}};
    const char* const subjects[] = {"reports", "sends to", "announces"};
    for (size_t i = 0; i < std::size(pairs); ++i) {
        const auto& [actual, wanted] = pairs[i];
        if (actual != wanted) {
            return std::string("the application ") + subjects[i] + " " + Joined(actual) +
                   " instead of " + Joined(wanted);
        }
    }
    return "";
}

std::string World::End() {
    m_channel.reset();
    m_model.End();
    const std::string leftover = m_model.ResourcesDifference();
    return leftover.empty() ? "" : "at the end " + leftover;
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

enum class Search {
    ALL,
    /// Only one of the orders that are the same to the transport; see IsNeeded().
    REDUCED
};

/// False for an event that a reduced search leaves out. The transport sees only the deliveries, the
/// refusals and the notices of an order. For each order of n events the reduced search has one of
/// at most n events in which the transport sees the same:
/// - A partner announces each step once and no announcement is lost, because each delivery is a
///   repetition, which leaves the announcement on the bus for the next one.
/// - A partner leaves immediately before the first notice of it, because it can announce until then
///   and its announcements can be delivered in either case.
bool IsNeeded(const Event& event, const Order& order, const HandshakeModel& model) {
    const Partner& partner = model.partners()[event.partner];
    if (!order.empty() && order.back().kind == Event::LEAVE) {
        return event.kind == Event::NOTICE && event.partner == order.back().partner;
    }
    switch (event.kind) {
        case Event::ANNOUNCE:
            return partner.held[event.step] == 0;
        case Event::DELIVER:
        case Event::LOSE:
            return false;
        case Event::LEAVE:
            return partner.state != Partner::UNKNOWN;
        default:
            return true;
    }
}

// Returns a transport and a model on which order has been played.
std::unique_ptr<World> After(const Order& order, size_t partners, Fault fault = nullptr) {
    auto world = std::make_unique<World>(partners, fault);
    for (const Event& event : order) {
        world->Play(event);
        world->Difference();
    }
    return world;
}

std::vector<Event> EventsAfter(const Order& order, const HandshakeModel& model, Search search) {
    std::vector<Event> events = AllHandshakeEvents(model.partners().size());
    std::erase_if(events, [&](const Event& event) {
        return !model.Allows(event) ||
               (search == Search::REDUCED && !IsNeeded(event, order, model));
    });
    return events;
}

/// Visits every state that up to depth events reach with this number of partners.
class Exploration {
public:
    Exploration(size_t partners, size_t depth, Search search, Fault fault = nullptr)
        : m_partners(partners), m_depth(depth), m_search(search), m_fault(fault) {}

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
        for (const Event& event :
             EventsAfter(order, After(order, m_partners, m_fault)->model(), m_search)) {
            const auto world = After(order, m_partners, m_fault);
            world->Play(event);
            Order extended = order;
            extended.push_back(event);
            std::string fault = world->Difference();
            const bool isNew = m_states.insert(world->model().State()).second;
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

    size_t m_partners;
    size_t m_depth;
    Search m_search;
    Fault m_fault;
    std::unordered_set<uint64_t> m_states;
};

size_t Depth(size_t usual) {
    const char* text = std::getenv("APPLIST_ORDERS_DEPTH");
    return text != nullptr ? std::strtoul(text, nullptr, 10) : usual;
}

class HandshakeOrders : public testing::TestWithParam<std::pair<size_t, size_t>> {};

TEST_P(HandshakeOrders, ConnectEachPartnerAfterTheThreeStepsAndLeaveNothing) {
    const auto& [partners, usual] = GetParam();
    Exploration exploration(partners, Depth(usual), Search::REDUCED);
    if (const auto fault = exploration.Run()) {
        ADD_FAILURE() << fault->second << "\n" << ScenarioOf(fault->first);
    }
    std::cout << exploration.states() << " states\n";
}

class ReducedSearch : public testing::TestWithParam<std::pair<const char*, Fault>> {};

TEST_P(ReducedSearch, FindsAFaultAfterAsManyEventsAsAFullSearch) {
    const Fault fault = GetParam().second;
    const auto full = Exploration(2, 6, Search::ALL, fault).Run();
    const auto reduced = Exploration(2, 6, Search::REDUCED, fault).Run();
    ASSERT_TRUE(full && reduced);
    EXPECT_EQ(reduced->first.size(), full->first.size()) << ScenarioOf(reduced->first);
    EXPECT_EQ(reduced->second, full->second);
}

// Adds what the transport sees of each order of at most depth events that starts with order.
void AddScenarios(const Order& order, size_t depth, Search search, std::set<std::string>& all) {
    all.insert(ScenarioOf(order));
    if (order.size() == depth) {
        return;
    }
    for (const Event& event : EventsAfter(order, After(order, 2)->model(), search)) {
        Order extended = order;
        extended.push_back(event);
        AddScenarios(extended, depth, search, all);
    }
}

TEST(AReducedSearch, ShowsTheTransportTheSameAsAllOrders) {
    const size_t depth = std::min<size_t>(Depth(5), 5);
    std::set<std::string> full;
    std::set<std::string> reduced;
    AddScenarios({}, depth, Search::ALL, full);
    AddScenarios({}, depth, Search::REDUCED, reduced);
    EXPECT_EQ(reduced, full);
}

TEST(ACounterexample, IsAScenarioThatTheSimulatorPlays) {
    Order order;
    for (const Event& event : AllHandshakeEvents(2)) {
        order.push_back(event);
    }
    EXPECT_TRUE(sim::ParseScenario(ScenarioOf(order)).errors.empty()) << ScenarioOf(order);
}

INSTANTIATE_TEST_SUITE_P(Partners, HandshakeOrders,
                         testing::Values(std::pair(1, 12), std::pair(2, 12), std::pair(3, 7)),
                         [](const auto& order) { return std::to_string(order.param.first); });

bool Contains(const Reports& reports, const std::string& report) {
    return std::find(reports.begin(), reports.end(), report) != reports.end();
}

bool RepeatsAnAck(const Reports& reports) {
    return Contains({reports.begin(), reports.end() - 1}, reports.back());
}

bool ConnectsASecondPartner(const Reports& reports) {
    return reports.size() == 2 && reports.front() != reports.back();
}

bool ConnectsALostPartner(const Reports& reports) {
    return Contains(reports, "lost " + reports.back().substr(std::strlen("connected ")));
}

INSTANTIATE_TEST_SUITE_P(Event4IsForgottenFor, ReducedSearch,
                         testing::Values(std::pair("ARepeatedAck", &RepeatsAnAck),
                                         std::pair("ASecondPartner", &ConnectsASecondPartner),
                                         std::pair("AReturningPartner", &ConnectsALostPartner)),
                         [](const auto& fault) { return fault.param.first; });

}  // namespace
}  // namespace applist::test
