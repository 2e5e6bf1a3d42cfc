// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "link/SelectionReader.h"
#include "middleware/Report.h"
#include "middleware/Session.h"

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

    /// client and report must outlive the log.
    EventLog(ListClient& client, const Report& report, Print print);

    void Add(const std::string& application, const Notification& notification);

    /// Prints the pending events of an application that left the bus. Call this before printing
    /// that it left.
    void Lost(const std::string& application) { m_reader.Lost(application); }

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
    SelectionReader m_reader;
    uint64_t m_lastNumber = 0;
    std::deque<Entry> m_entries;
};

/// Prints every event of every application until a signal ends it.
class Watch : public Session {
public:
    using Session::Session;

protected:
    void OnConnected(const std::string& application) override;
    void OnDisconnected(const std::string& application) override;
    void OnNotified(const std::string& application, const Notification& notification) override;

private:
    EventLog& Log();

    std::unique_ptr<EventLog> m_log;
};

}  // namespace applist::sim
