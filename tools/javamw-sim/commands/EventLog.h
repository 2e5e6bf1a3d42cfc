// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>

#include "commands/Report.h"
#include "protocol/ListClient.h"

namespace applist::sim {

/// Turns events into lines, each with the selection read after it, in the order of the events.
///
/// An event says only that something happened, and it arrives before the reply to the call that
/// caused it: the selection is asked for without waiting, and a line is held back until the lines
/// before it are complete.
class EventLog {
public:
    using Print = std::function<void(const std::string& line)>;

    /// client and report must outlive the log.
    EventLog(ListClient& client, const Report& report, Print print);

    void Add(const std::string& application, const Notification& notification);

    /// The application is gone: its events that wait for an answer get none. To be called before
    /// that end is printed.
    void Lost(const std::string& application);

private:
    struct Entry {
        uint64_t number = 0;
        std::string application;
        Notification notification;
        std::optional<SelectedItem> selection;  ///< Nothing until that has been asked.
    };
    void Complete(uint64_t number, const SelectedItem& selection);
    void PrintCompleted();

    ListClient& m_client;
    const Report& m_report;
    Print m_print;
    uint64_t m_lastNumber = 0;
    std::deque<Entry> m_entries;
};

}  // namespace applist::sim
