// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "support/DrivenMiddleware.h"

#include <utility>

#include <gtest/gtest.h>

#include "support/GlibWait.h"

namespace applist::test {
namespace {

// A system bus refuses a connection's 129th pending call.
constexpr size_t CALLS_UNDER_WAY = 100;

}  // namespace

DrivenMiddleware::DrivenMiddleware(const std::string& address) {
    auto connection = sim::OpenBus(address);
    if (!connection) {
        ADD_FAILURE() << "cannot reach the bus: " << connection.error();
        return;
    }
    m_link = std::make_unique<sim::BusLink>(std::move(*connection), *this);
    m_client = std::make_unique<sim::ListClient>(*m_link);
}

bool DrivenMiddleware::AwaitApplication() {
    return RunUntil(
        [this] { return m_connected && m_events.count(sim::Event::LocalCreated) != 0; });
}

bool DrivenMiddleware::AwaitDisconnection() {
    return RunUntil([this] { return !m_connected; });
}

bool DrivenMiddleware::AwaitEvents(sim::Event event, size_t count) {
    return RunUntil([&] { return Events(event) >= count; });
}

size_t DrivenMiddleware::Events(sim::Event event) const {
    const auto found = m_events.find(event);
    return found != m_events.end() ? found->second : 0;
}

void DrivenMiddleware::Call(sim::Function function, const sim::Items& items) {
    EXPECT_TRUE(RunUntil([this] { return m_pending < CALLS_UNDER_WAY; }));
    ++m_pending;
    m_client->Call(m_application, function, items,
                   [this](const sim::Result<sim::Items>& reply) { Take(reply); });
}

bool DrivenMiddleware::AwaitReplies() {
    return RunUntil([this] { return m_pending == 0; });
}

std::optional<sim::Items> DrivenMiddleware::Ask(sim::Function function, const sim::Items& items) {
    std::optional<sim::Items> answer;
    bool ended = false;
    m_client->Call(m_application, function, items, [&](const sim::Result<sim::Items>& reply) {
        ended = true;
        if (reply) {
            answer = *reply;
        } else {
            ADD_FAILURE() << sim::NameOf(function) << ": " << reply.error();
        }
    });
    // Longer than the bus library's timeout, because the callback uses this stack frame.
    EXPECT_TRUE(RunUntil([&ended] { return ended; }, 2 * PATIENCE));
    return answer;
}

void DrivenMiddleware::Take(const sim::Result<sim::Items>& reply) {
    --m_pending;
    (reply ? m_answered : m_failed) += 1;
}

void DrivenMiddleware::Connected(const std::string& application) {
    m_application = application;
    m_events.clear();
    m_connected = true;
}

void DrivenMiddleware::Disconnected(const std::string& application) {
    m_connected = m_connected && application != m_application;
}

void DrivenMiddleware::Notified(const std::string& application, const sim::Bytes& message) {
    const auto notification = sim::DecodeNotification(message);
    if (notification && application == m_application) {
        ++m_events[notification->event];
    }
}

sim::Bytes DrivenMiddleware::Called(const std::string& /*application*/,
                                    const sim::Bytes& /*message*/) {
    ADD_FAILURE() << "the application never calls";
    return {};
}

void DrivenMiddleware::LinkFailed(const std::string& error) {
    ADD_FAILURE() << error;
}

void DrivenMiddleware::BusLost() {
    m_connected = false;
}

}  // namespace applist::test
