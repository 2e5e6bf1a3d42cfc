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
    m_pending[number] = {application, event, std::move(done)};
    m_ask(application,
          [this, number](const Result<Items>& reply) { Complete(number, SelectedIn(reply)); });
}

void SelectionReader::Lost(const std::string& application) {
    // The numbers are collected first, because Complete() erases from the map.
    std::vector<uint64_t> numbers;
    for (const auto& [number, read] : m_pending) {
        if (read.application == application) {
            numbers.push_back(number);
        }
    }
    for (const uint64_t number : numbers) {
        Complete(number, {std::nullopt, "the application ended"});
    }
    m_latest.erase(application);
}

bool SelectionReader::IsPending(Event event) const {
    return std::any_of(m_pending.begin(), m_pending.end(),
                       [event](const auto& entry) { return entry.second.event == event; });
}

// A reply that arrives after Lost() belongs to a read that is already complete.
void SelectionReader::Complete(uint64_t number, const SelectedItem& answer) {
    const auto found = m_pending.find(number);
    if (found == m_pending.end()) {
        return;
    }
    // The entry is erased before the callback runs, because the callback may start another read.
    const Pending read = std::move(found->second);
    m_pending.erase(found);
    read.done(Resolve(read, answer));
}

SelectedItem SelectionReader::Resolve(const Pending& read, const SelectedItem& answer) {
    if (read.event == Event::ItemSelected) {
        m_latest[read.application] = answer;
    }
    const auto latest = m_latest.find(read.application);
    // The application may close after a click and before it replies. The selection read before the
    // click is then the item that was chosen.
    const bool useLatest = read.event == Event::ItemClicked && !answer.problem.empty() &&
                           latest != m_latest.end() && latest->second.problem.empty();
    return useLatest ? latest->second : answer;
}

}  // namespace applist::sim
