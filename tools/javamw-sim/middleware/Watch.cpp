// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "middleware/Watch.h"

#include <utility>

namespace applist::sim {

EventLog::EventLog(ListClient& client, const Report& report, Print print)
    : m_report(report), m_print(std::move(print)), m_reader(client) {}

void EventLog::Add(const std::string& application, const Notification& notification) {
    const uint64_t number = ++m_lastNumber;
    m_entries.push_back({number, application, notification, std::nullopt});
    m_reader.Read(application, notification.event,
                  [this, number](const SelectedItem& selection) { Complete(number, selection); });
}

void EventLog::Complete(uint64_t number, const SelectedItem& selection) {
    for (Entry& entry : m_entries) {
        if (entry.number == number) {
            entry.selection = selection;
        }
    }
    while (!m_entries.empty() && m_entries.front().selection) {
        const Entry first = std::move(m_entries.front());
        m_entries.pop_front();
        m_print(m_report.Event(first.application, first.notification, *first.selection));
    }
}

void Watch::OnConnected(const std::string& application) {
    Print(report().Connected(application));
}

void Watch::OnDisconnected(const std::string& application) {
    Log().Lost(application);
    Print(report().Disconnected(application));
}

void Watch::OnNotified(const std::string& application, const Notification& notification) {
    Log().Add(application, notification);
}

EventLog& Watch::Log() {
    if (!m_log) {
        m_log = std::make_unique<EventLog>(client(), report(),
                                           [this](const std::string& line) { Print(line); });
    }
    return *m_log;
}

}  // namespace applist::sim
