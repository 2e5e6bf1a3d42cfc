// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "commands/EventLog.h"

#include <utility>

#include "Output.h"

namespace applist::sim {
namespace {

std::string DescribeSelection(const Result<Items>& reply) {
    if (!reply) {
        return "unreadable: " + OneLine(reply.error());
    }
    if (reply->size() != 1) {
        return "unreadable: " + std::to_string(reply->size()) + " items in the reply";
    }
    const Item& item = reply->front();
    return item.id.empty() ? "none" : ItemLine(item);
}

}  // namespace

EventLog::EventLog(ListClient& client, Print print) : m_client(client), m_print(std::move(print)) {}

void EventLog::Add(const std::string& application, const Notification& notification) {
    const uint64_t number = ++m_lastNumber;
    m_entries.push_back({number, application, DescribeNotification(notification), {}});
    m_client.Call(
        application, Function::GetSelection, {},
        [this, number](const Result<Items>& reply) { Complete(number, DescribeSelection(reply)); });
}

void EventLog::Lost(const std::string& application) {
    for (Entry& entry : m_entries) {
        if (entry.application == application && entry.selection.empty()) {
            entry.selection = "unreadable: the application ended";
        }
    }
    PrintCompleted();
}

// An entry given up before is no longer there, or has its text.
void EventLog::Complete(uint64_t number, const std::string& selection) {
    for (Entry& entry : m_entries) {
        if (entry.number == number && entry.selection.empty()) {
            entry.selection = selection;
        }
    }
    PrintCompleted();
}

void EventLog::PrintCompleted() {
    while (!m_entries.empty() && !m_entries.front().selection.empty()) {
        const Entry first = std::move(m_entries.front());
        m_entries.pop_front();
        m_print(first.event + " selection " + first.selection);
    }
}

}  // namespace applist::sim
