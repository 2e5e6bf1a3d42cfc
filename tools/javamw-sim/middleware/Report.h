// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>

#include "link/SelectionReader.h"

namespace applist::sim {

/// How many items of a list an update touched.
struct UpdateCounts {
    size_t added = 0;
    size_t removed = 0;
    size_t renamed = 0;
};

/// How the commands tell what happens: each of these is one line of output.
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
    /// The list of the application was filled with so many items.
    virtual std::string Filled(const std::string& application, size_t items) const = 0;
    /// The list of the application follows what is offered now.
    virtual std::string Updated(const std::string& application,
                                const UpdateCounts& counts) const = 0;
    virtual std::string Event(const std::string& application, const Notification& notification,
                              const SelectedItem& selection) const = 0;
    /// One item of the reply to a call.
    virtual std::string ItemOfReply(const Item& item) const = 0;
};

/// For people. The words of a line are the same with colours and without.
std::unique_ptr<Report> TextReport(bool colours);

/// For machines: one JSON object a line.
std::unique_ptr<Report> JsonReport();

}  // namespace applist::sim
