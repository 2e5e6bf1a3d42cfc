// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>

#include "link/Protocol.h"

namespace applist::sim {

/// The answer to the question which item is selected.
struct SelectedItem {
    std::optional<Item> item;  ///< No item is selected if absent.
    std::string problem;       ///< Why the selection is unknown; empty if it is known.
};

/// Interprets a reply to GetSelection.
SelectedItem SelectedIn(const Result<Items>& reply);

/// Returns "chose ID<TAB>NAME" after event 3, because its selection is the viewer's choice, and
/// "selection ID<TAB>NAME" after any other event; or the reason why the selection is unknown.
std::string DescribeSelection(Event event, const SelectedItem& selection);

/// Reads the selection after each event, and reports what it has read in the order of the events.
///
/// An event carries no item, and it arrives before the reply to the call that caused it. The
/// selection is therefore read without blocking.
///
/// The application ends shortly after event 3 and may no longer answer. The chosen item is then the
/// answer to the GetSelection call that followed the most recent event 2. An older answer is never
/// used, because the viewer has moved on since then.
class SelectionReader {
public:
    using Done = std::function<void(const SelectedItem& selection)>;
    /// Calls GetSelection of an application and runs done with the reply.
    using Ask = std::function<void(const std::string& application,
                                   std::function<void(const Result<Items>& reply)> done)>;

    explicit SelectionReader(Ask ask) : m_ask(std::move(ask)) {}

    /// Calls GetSelection. Runs done once, from the main loop or from Lost(), after the callbacks
    /// of all earlier reads.
    void Read(const std::string& application, Event event, Done done);

    /// Completes all pending reads of an application that left the bus.
    void Lost(const std::string& application);

    /// True if a read after this event is pending.
    bool IsPending(Event event) const;

private:
    struct Pending {
        std::string application;
        Event event{};
        Done done;
        uint64_t number = 0;
        std::optional<SelectedItem> selection{};  ///< Absent until it has been read.
    };
    void Complete(Pending& read, const SelectedItem& answer);
    void RunCallbacks();

    Ask m_ask;
    uint64_t m_lastNumber = 0;
    std::deque<Pending> m_pending;
    /// Per application the answer that followed the most recent event 2; absent while pending.
    std::map<std::string, SelectedItem> m_latest;
};

}  // namespace applist::sim
