// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "middleware/Middleware.h"

#include <utility>

#include "common/Output.h"

namespace applist::sim {

using Kind = Happening::Kind;

std::string Describe(const Happening& happening) {
    switch (happening.kind) {
        case Kind::Connected:
            return "connected " + happening.application;
        case Kind::Disconnected:
            return "disconnected " + happening.application;
        case Kind::Announced:
            return "announcement " + std::string(NameOf(happening.announcement));
        case Kind::Notified:
            return DescribeMessage(happening.message);
        case Kind::Called:
            return "call of " + std::to_string(happening.message.size()) + " bytes from " +
                   happening.application;
        case Kind::Failed:
        case Kind::Denied:
        case Kind::BusLost:
            break;
    }
    return happening.problem;
}

std::string DescribeMessage(const Bytes& message) {
    const auto notification = DecodeNotification(message);
    return notification
               ? DescribeNotification(*notification)
               : "notification of " + std::to_string(message.size()) + " bytes without an id";
}

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
    std::string refusal = prepare ? prepare(connection->get()) : std::string();
    if (refusal.empty()) {
        m_link = std::make_unique<BusLink>(std::move(*connection), *this, m_plan);
        m_client = std::make_unique<ListClient>(*m_link);
        m_selections = std::make_unique<SelectionReader>(*m_client);
    }
    return refusal;
}

// The end of the link cancels the calls of the others, so it comes first.
void Middleware::Vanish() {
    m_link.reset();
    m_selections.reset();
    m_client.reset();
    m_busProblem.clear();
    m_connected = false;
    m_application.clear();
}

void Middleware::Connected(const std::string& application) {
    m_connected = true;
    m_application = application;
    Tell({.kind = Kind::Connected, .application = application});
}

void Middleware::Disconnected(const std::string& application) {
    if (application == m_application) {
        m_connected = false;
        m_application.clear();
    }
    m_selections->Lost(application);
    Tell({.kind = Kind::Disconnected, .application = application});
}

void Middleware::Announced(const std::string& application, Announcement announcement) {
    if (!m_connected) {
        m_application = application;
    }
    Tell({.kind = Kind::Announced, .application = application, .announcement = announcement});
}

void Middleware::Notified(const std::string& application, const Bytes& message) {
    Tell({.kind = Kind::Notified, .application = application, .message = message});
}

Bytes Middleware::Called(const std::string& application, const Bytes& message) {
    Tell({.kind = Kind::Called, .application = application, .message = message});
    return {};
}

void Middleware::LinkFailed(const std::string& error) {
    Tell({.kind = Kind::Failed, .problem = error});
}

void Middleware::LinkDenied(const std::string& error) {
    m_busProblem = error + "; " + DENIED_HINT;
    Tell({.kind = Kind::Denied, .problem = error});
}

void Middleware::BusLost() {
    m_busProblem = "the bus closed the connection";
    Tell({.kind = Kind::BusLost, .problem = m_busProblem});
}

}  // namespace applist::sim
