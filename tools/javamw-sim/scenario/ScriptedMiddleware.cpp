// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "scenario/ScriptedMiddleware.h"

#include <utility>

#include "common/Output.h"

namespace applist::sim {

ScriptedMiddleware::ScriptedMiddleware(std::string name, std::string address, Observer observer,
                                       ChoiceObserver choiceObserver)
    : m_name(std::move(name)),
      m_address(std::move(address)),
      m_observer(std::move(observer)),
      m_choiceObserver(std::move(choiceObserver)) {}

ScriptedMiddleware::~ScriptedMiddleware() = default;

void ScriptedMiddleware::SetPlan(const HandshakePlan& plan) {
    m_plan = plan;
    if (m_link) {
        m_link->SetPlan(plan);
    }
}

std::string ScriptedMiddleware::Join() {
    if (m_link) {
        return {};
    }
    auto connection = OpenBus(m_address);
    if (!connection) {
        return "cannot reach the bus: " + connection.error();
    }
    m_link = std::make_unique<BusLink>(std::move(*connection), *this, m_plan);
    if (m_choiceObserver) {
        m_client = std::make_unique<ListClient>(*m_link);
        m_selections = std::make_unique<SelectionReader>(*m_client);
    }
    return m_busProblem;
}

void ScriptedMiddleware::Vanish() {
    m_link.reset();
    m_selections.reset();
    m_busProblem.clear();
    m_connected = false;
    m_application.clear();
}

void ScriptedMiddleware::Connected(const std::string& application) {
    m_connected = true;
    m_application = application;
    m_observer(*this, "connected " + application);
}

void ScriptedMiddleware::Disconnected(const std::string& application) {
    if (application == m_application) {
        m_connected = false;
        m_application.clear();
    }
    if (m_selections) {
        m_selections->Lost(application);
    }
    m_observer(*this, "disconnected " + application);
}

void ScriptedMiddleware::Announced(const std::string& application, Announcement announcement) {
    if (!m_connected) {
        m_application = application;
    }
    m_announcements.push_back(announcement);
}

void ScriptedMiddleware::Notified(const std::string& application, const Bytes& message) {
    m_events.push_back(message);
    const auto event = DecodeNotification(message);
    if (!event || !TakeChoice(application, *event)) {
        m_observer(*this, DescribeMessage(message));
    }
}

// The selection is read after event 2 as well, because it is the choice if the application does not
// answer after event 3.
bool ScriptedMiddleware::TakeChoice(const std::string& application, const Notification& event) {
    const bool choice = event.event == Event::ItemClicked;
    if (m_selections && (choice || event.event == Event::ItemSelected)) {
        m_selections->Read(application, event.event,
                           [this, event, choice](const SelectedItem& selection) {
                               if (choice) {
                                   m_choiceObserver(*this, event, selection);
                               }
                           });
    }
    return m_selections && choice;
}

Bytes ScriptedMiddleware::Called(const std::string& application, const Bytes& message) {
    m_observer(*this, "call of " + std::to_string(message.size()) + " bytes from " + application);
    return {};
}

void ScriptedMiddleware::LinkFailed(const std::string& error) {
    m_observer(*this, error);
}

void ScriptedMiddleware::LinkDenied(const std::string& error) {
    m_busProblem = error + "; " + DENIED_HINT;
}

void ScriptedMiddleware::BusLost() {
    m_busProblem = "the bus closed the connection";
    m_observer(*this, m_busProblem);
}

std::string DescribeMessage(const Bytes& message) {
    const auto notification = DecodeNotification(message);
    return notification
               ? DescribeNotification(*notification)
               : "notification of " + std::to_string(message.size()) + " bytes without an id";
}

}  // namespace applist::sim
