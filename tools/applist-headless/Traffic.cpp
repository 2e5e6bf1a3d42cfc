// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "Traffic.h"

#include <algorithm>
#include <utility>

#include "CallbackGuard.h"

namespace applist::headless {
namespace {

using sim::MessageKind;

bool IsLocalCreated(const sim::RecordedMessage& message) {
    const auto event = sim::DecodeNotification(message.bytes);
    return event && event->event == sim::Event::LocalCreated && event->payloadSize == 0;
}

}  // namespace

Traffic::Traffic(GDBusConnection* connection, std::function<void()> onChange)
    : m_onChange(std::move(onChange)),
      m_tap(connection, sim::TrafficTap::Use::Participant,
            [this](const sim::RecordedMessage& message) { Take(message); }) {}

Traffic::Counts Traffic::Read() const {
    const std::lock_guard lock(m_mutex);
    return m_counts;
}

void Traffic::Take(const sim::RecordedMessage& message) {
    {
        const std::lock_guard lock(m_mutex);
        auto& partners = m_counts.partners;
        if (message.kind == MessageKind::Call) {
            ++m_counts.calls;
        } else if (message.kind == MessageKind::Left) {
            std::erase(partners, message.from);
        } else if (message.kind == MessageKind::Signal && message.side == sim::Side::Application) {
            ++m_counts.events;
            // The event completes a handshake. It is repeated if both sides start together.
            if (IsLocalCreated(message) &&
                std::find(partners.begin(), partners.end(), message.to) == partners.end()) {
                partners.push_back(message.to);
            }
        }
    }
    using Action = std::function<void()>;
    g_idle_add_full(
        G_PRIORITY_DEFAULT_IDLE,
        [](void* action) {
            GuardCallback(*static_cast<Action*>(action));
            return G_SOURCE_REMOVE;
        },
        new Action(m_onChange), [](void* action) { delete static_cast<Action*>(action); });
}

}  // namespace applist::headless
