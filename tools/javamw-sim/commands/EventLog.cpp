// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "commands/EventLog.h"

#include <utility>

namespace applist::sim {

EventLog::EventLog(ListClient& client, const Report& report, Print print)
    : m_client(client), m_report(report), m_print(std::move(print)) {}

void EventLog::Add(const std::string& application, const Notification& notification) {
    const uint64_t number = ++m_lastNumber;
    m_entries.push_back({number, application, notification, std::nullopt});
    m_client.Call(
        application, Function::GetSelection, {},
        [this, number](const Result<Items>& reply) { Complete(number, SelectedIn(reply)); });
}

void EventLog::Lost(const std::string& application) {
    for (Entry& entry : m_entries) {
        if (entry.application == application && !entry.selection) {
            entry.selection = SelectedItem{std::nullopt, "the application ended"};
        }
    }
    PrintCompleted();
}

// An entry given up before is no longer there, or has its text.
void EventLog::Complete(uint64_t number, const SelectedItem& selection) {
    for (Entry& entry : m_entries) {
        if (entry.number == number && !entry.selection) {
            entry.selection = selection;
        }
    }
    PrintCompleted();
}

void EventLog::PrintCompleted() {
    while (!m_entries.empty() && m_entries.front().selection) {
        const Entry first = std::move(m_entries.front());
        m_entries.pop_front();
        m_print(m_report.Event(first.application, first.notification, *first.selection));
    }
}

}  // namespace applist::sim
