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
    m_link = std::make_unique<sim::BusLink>(
        std::move(*connection), [this](const sim::Happening& happening) { Hear(happening); });
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
    m_link->Call(m_application, function, items,
                 [this](const Result<sim::Items>& reply) { Take(reply); });
}

bool DrivenMiddleware::AwaitReplies() {
    return RunUntil([this] { return m_pending == 0; });
}

std::optional<sim::Items> DrivenMiddleware::Ask(sim::Function function, const sim::Items& items) {
    std::optional<sim::Items> answer;
    bool ended = false;
    m_link->Call(m_application, function, items, [&](const Result<sim::Items>& reply) {
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

void DrivenMiddleware::Take(const Result<sim::Items>& reply) {
    --m_pending;
    (reply ? m_answered : m_failed) += 1;
}

void DrivenMiddleware::Hear(const sim::Happening& happening) {
    using Kind = sim::Happening::Kind;
    const bool ours = happening.application == m_application;
    if (happening.kind == Kind::Connected) {
        m_application = happening.application;
        m_events.clear();
        m_connected = true;
    } else if (happening.kind == Kind::BusLost || (happening.kind == Kind::Disconnected && ours)) {
        m_connected = false;
    } else if (happening.kind == Kind::Notified && ours) {
        if (const auto notification = sim::DecodeNotification(happening.message)) {
            ++m_events[notification->event];
        }
    } else if (happening.kind == Kind::Called || happening.kind == Kind::Failed ||
               happening.kind == Kind::Denied) {
        ADD_FAILURE() << sim::Describe(happening);
    }
}

}  // namespace applist::test
