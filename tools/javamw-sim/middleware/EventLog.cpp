// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "middleware/EventLog.h"

#include <utility>

namespace applist::sim {

void EventLog::Add(SelectionReader& reader, const std::string& application,
                   const Notification& notification) {
    const uint64_t number = ++m_lastNumber;
    m_entries.push_back({number, application, notification, std::nullopt});
    reader.Read(application, notification.event,
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

}  // namespace applist::sim
