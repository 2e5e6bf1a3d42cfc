// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "middleware/Middleware.h"

#include <utility>

#include "middleware/MainLoop.h"

namespace applist::sim {

Middleware::Middleware(std::string name, std::string address, Observer observer)
    : m_name(std::move(name)), m_address(std::move(address)), m_observer(std::move(observer)) {}

void Middleware::SetPlan(const HandshakePlan& plan) {
    m_plan = plan;
    if (m_link) {
        m_link->SetPlan(plan);
    }
}

std::string Middleware::Join(const Prepare& prepare) {
    if (m_link) {
        return {};
    }
    auto connection = OpenBus(m_address);
    if (!connection) {
        return "cannot reach the bus: " + connection.error();
    }
    // The preparation precedes the link, whose constructor begins the handshake.
    std::string refusal = prepare ? prepare(connection->get()) : std::string();
    if (refusal.empty()) {
        m_link = std::make_unique<BusLink>(
            std::move(*connection), [this](const Happening& happening) { Take(happening); },
            m_plan);
        m_selections =
            std::make_unique<SelectionReader>([this](const auto& application, auto done) {
                m_link->Call(application, Function::GetSelection, {}, std::move(done));
            });
    }
    return refusal;
}

// The link is reset first, because the callbacks of its pending calls use the selection reader.
void Middleware::Vanish() {
    m_link.reset();
    m_selections.reset();
    m_busProblem.clear();
    m_connected = false;
    m_application.clear();
}

void Middleware::Take(const Happening& happening) {
    const std::string& application = happening.application;
    switch (happening.kind) {
        case Happening::Kind::Connected:
            m_connected = true;
            m_application = application;
            break;
        case Happening::Kind::Disconnected:
            if (application == m_application) {
                m_connected = false;
                m_application.clear();
            }
            // Pending reads complete with an error, so that no event is left unreported.
            m_selections->Lost(application);
            break;
        case Happening::Kind::Announced:
            // Before a connection exists, the last application that announced itself is shown.
            m_application = m_connected ? m_application : application;
            break;
        case Happening::Kind::Denied:
            m_busProblem = happening.problem + "; " + DENIED_HINT;
            break;
        case Happening::Kind::BusLost:
            m_busProblem = happening.problem;
            break;
        case Happening::Kind::Notified:
        case Happening::Kind::Called:
        case Happening::Kind::Failed:
            break;
    }
    // The observer is called last, so that it sees the new state.
    m_observer(*this, happening);
}

}  // namespace applist::sim
