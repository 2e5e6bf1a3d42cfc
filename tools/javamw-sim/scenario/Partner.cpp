// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "scenario/Partner.h"

#include <utility>

namespace applist::sim {

Partner::Partner(std::string name, std::string address, Observer observer)
    : m_name(std::move(name)), m_address(std::move(address)), m_observer(std::move(observer)) {}

Partner::~Partner() = default;

void Partner::SetPlan(const HandshakePlan& plan) {
    m_plan = plan;
    if (m_link) {
        m_link->SetPlan(plan);
    }
}

std::string Partner::Join() {
    if (m_link) {
        return {};
    }
    auto connection = OpenBus(m_address);
    if (!connection) {
        return "cannot reach the bus: " + connection.error();
    }
    m_link = std::make_unique<BusLink>(std::move(*connection), *this, m_plan);
    return {};
}

void Partner::Vanish() {
    m_link.reset();
    m_busLost = false;
    m_connected = false;
    m_application.clear();
}

void Partner::Connected(const std::string& application) {
    m_connected = true;
    m_application = application;
    m_observer(*this, "connected " + application);
}

void Partner::Disconnected(const std::string& application) {
    if (application == m_application) {
        m_connected = false;
        m_application.clear();
    }
    m_observer(*this, "disconnected " + application);
}

void Partner::Announced(const std::string& application, Announcement announcement) {
    if (!m_connected) {
        m_application = application;
    }
    m_announcements.push_back(announcement);
}

void Partner::Notified(const std::string& /*application*/, const Bytes& message) {
    m_events.push_back(message);
    m_observer(*this, DescribeMessage(message));
}

Bytes Partner::Called(const std::string& application, const Bytes& message) {
    m_observer(*this, "call of " + std::to_string(message.size()) + " bytes from " + application);
    return {};
}

void Partner::LinkFailed(const std::string& error) {
    m_observer(*this, error);
}

void Partner::BusLost() {
    m_busLost = true;
    m_observer(*this, "the bus closed the connection");
}

std::string DescribeMessage(const Bytes& message) {
    const auto notification = DecodeNotification(message);
    return notification
               ? DescribeNotification(*notification)
               : "notification of " + std::to_string(message.size()) + " bytes without an id";
}

}  // namespace applist::sim
