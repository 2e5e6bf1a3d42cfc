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
    explicit World(size_t partners) : m_model(partners) {
        TheHeldBus() = HeldBus{};
        m_channel = std::make_unique<Channel>();
        TheHeldBus().TakeOwnedNames();
    }

    bool Allows(const Event& event) const { return m_model.Allows(event); }
    void Play(const Event& event) { m_model.Play(event); }
    /// Returns what differs from the model; empty if nothing does.
    std::string Difference();
    /// Destroys the transport. Returns a description of leftovers on the bus; empty if there are
    /// none.
    std::string End();

    /// Equal for states that only differ in the partners' names.
    std::pair<std::vector<Partner>, bool> State() const {
        auto partners = m_model.partners();
        std::sort(partners.begin(), partners.end());
        return {partners, TheHeldBus().refusesNextName()};
    }

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
        {std::exchange(m_channel->reports, {}), expected.reports},
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
        std::vector<Event> events = AllHandshakeEvents(m_partners);
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
    for (const Event& event : AllHandshakeEvents(2)) {
        order.push_back(event);
    }
    EXPECT_TRUE(sim::ParseScenario(ScenarioOf(order)).errors.empty()) << ScenarioOf(order);
}

INSTANTIATE_TEST_SUITE_P(Partners, HandshakeOrders,
                         testing::Values(std::pair(1, 12), std::pair(2, 7), std::pair(3, 5)),
                         [](const auto& order) { return std::to_string(order.param.first); });

}  // namespace
}  // namespace applist::test
