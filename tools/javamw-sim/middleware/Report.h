// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>

#include "link/SelectionReader.h"
#include "shared/Json.h"

namespace applist::sim {

/// Counts of an update of a list.
struct UpdateCounts {
    size_t added = 0;
    size_t removed = 0;
    size_t renamed = 0;
};

/// Formats what happens in a session. Each method returns one line of output.
class Report {
public:
    Report() = default;
    virtual ~Report() = default;
    Report(const Report&) = delete;
    Report& operator=(const Report&) = delete;
    Report(Report&&) = delete;
    Report& operator=(Report&&) = delete;

    virtual std::string Connected(const std::string& application) const = 0;
    virtual std::string Disconnected(const std::string& application) const = 0;
    /// The list of the application was filled with this number of items.
    virtual std::string Filled(const std::string& application, size_t items) const = 0;
    /// The list of the application was updated.
    virtual std::string Updated(const std::string& application,
                                const UpdateCounts& counts) const = 0;
    virtual std::string Event(const std::string& application, const Notification& notification,
                              const SelectedItem& selection) const = 0;
    /// An item of the reply to a call.
    virtual std::string ItemOfReply(const Item& item) const = 0;
};

/// Returns lines for people. The words are the same with and without colours.
std::unique_ptr<Report> TextReport(bool colours);

/// Returns one JSON object per line.
std::unique_ptr<Report> JsonReport();

/// Returns the JSON object of an event. Without a selection it has no member for it.
tools::Json EventObject(const std::string& application, const Notification& notification,
                        const SelectedItem* selection);

/// Returns the JSON object of an item.
tools::Json ItemObject(const Item& item);

}  // namespace applist::sim
