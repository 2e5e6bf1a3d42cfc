// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>

#include "link/SelectionReader.h"
#include "middleware/Report.h"

namespace applist::sim {

/// Prints each event together with the selection that was read after it, in the order of the
/// events.
///
/// An event carries no item, and it arrives before the reply to the call that caused it. The log
/// therefore reads the selection without blocking, and prints a line only when all lines before it
/// are complete.
class EventLog {
public:
    using Print = std::function<void(const std::string& line)>;

    /// report must outlive the log.
    EventLog(const Report& report, Print print) : m_report(report), m_print(std::move(print)) {}

    /// Reads the selection through reader. The log must outlive the read.
    void Add(SelectionReader& reader, const std::string& application,
             const Notification& notification);

private:
    struct Entry {
        uint64_t number = 0;
        std::string application;
        Notification notification;
        std::optional<SelectedItem> selection;  ///< Absent until it has been read.
    };
    void Complete(uint64_t number, const SelectedItem& selection);

    const Report& m_report;
    Print m_print;
    uint64_t m_lastNumber = 0;
    std::deque<Entry> m_entries;
};

}  // namespace applist::sim
