// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "link/SelectionReader.h"

#include <algorithm>
#include <utility>

#include "shared/Output.h"

namespace applist::sim {

SelectedItem SelectedIn(const Result<Items>& reply) {
    if (!reply) {
        return {std::nullopt, reply.error()};
    }
    if (reply->size() != 1) {
        return {std::nullopt, std::to_string(reply->size()) + " items in the reply"};
    }
    const Item& item = reply->front();
    // The application replies with an empty item if nothing is selected.
    return {item.id.empty() ? std::nullopt : std::optional(item), ""};
}

std::string DescribeSelection(Event event, const SelectedItem& selection) {
    const bool choice = event == Event::ItemClicked;
    if (!selection.problem.empty()) {
        return (choice ? "choice unknown: " : "selection unreadable: ") +
               tools::OneLine(selection.problem);
    }
    return (choice ? "chose " : "selection ") +
           (selection.item ? ItemLine(*selection.item) : std::string("none"));
}

void SelectionReader::Read(const std::string& application, Event event, Done done) {
    if (event == Event::ItemSelected) {
        // The earlier selection is outdated. A click must not report it if this read fails.
        m_latest.erase(application);
    }
    const uint64_t number = ++m_lastNumber;
    // The read keeps its place, because replies may arrive in another order than the events.
    m_pending.push_back({application, event, std::move(done), number});
    m_ask(application, [this, number](const Result<Items>& reply) {
        const auto read = std::ranges::find(m_pending, number, &Pending::number);
        if (read != m_pending.end()) {
            Complete(*read, SelectedIn(reply));
            RunCallbacks();
        }
    });
}

void SelectionReader::Lost(const std::string& application) {
    for (Pending& read : m_pending) {
        if (read.application == application) {
            Complete(read, {std::nullopt, "the application ended"});
        }
    }
    m_latest.erase(application);
    RunCallbacks();
}

bool SelectionReader::IsPending(Event event) const {
    return std::ranges::find(m_pending, event, &Pending::event) != m_pending.end();
}

void SelectionReader::Complete(Pending& read, const SelectedItem& answer) {
    // A reply that arrives after Lost() is ignored.
    if (read.selection) {
        return;
    }
    if (read.event == Event::ItemSelected) {
        m_latest[read.application] = answer;
    }
    const auto latest = m_latest.find(read.application);
    // The application may close after a click and before it replies. The selection read before the
    // click is then the item that was chosen.
    const bool useLatest = read.event == Event::ItemClicked && !answer.problem.empty() &&
                           latest != m_latest.end() && latest->second.problem.empty();
    read.selection = useLatest ? latest->second : answer;
}

void SelectionReader::RunCallbacks() {
    while (!m_pending.empty() && m_pending.front().selection) {
        // Removed before its callback runs, because the callback may start another read.
        const Pending first = std::move(m_pending.front());
        m_pending.pop_front();
        first.done(*first.selection);
    }
}

}  // namespace applist::sim
