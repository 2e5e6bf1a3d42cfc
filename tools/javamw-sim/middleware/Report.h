// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>

#include "feed/ListUpdate.h"
#include "link/BusLink.h"
#include "link/SelectionReader.h"
#include "shared/Output.h"

namespace applist::sim {

/// Formats the output of sessions and of the shell, one line for each call: for people, in colours
/// if wanted, or as a JSON object.
class Report {
public:
    /// The words for people are the same with and without colours.
    Report(bool json, bool colours) : m_json(json), m_colours(colours) {}

    // --- of a session ---
    std::string Connected(const std::string& application) const;
    std::string Disconnected(const std::string& application) const;
    /// The list of the application was filled with this number of items.
    std::string Filled(const std::string& application, size_t items) const;
    /// The list of the application was updated.
    std::string Updated(const std::string& application, const UpdateCounts& counts) const;
    std::string Event(const std::string& application, const Notification& notification,
                      const SelectedItem& selection) const;
    /// An item of the reply to a call.
    std::string ItemOfReply(const Item& item) const;

    // --- of the shell, which has several middlewares ---
    std::string Happened(const std::string& middleware, const Happening& happening) const;
    /// An event 3 and the item that the viewer chose.
    std::string Choice(const std::string& middleware, const std::string& application,
                       const Notification& event, const SelectedItem& choice) const;
    /// A statement that succeeded.
    std::string Held(const std::string& statement) const;
    std::string Problem(const std::string& statement, const std::string& problem) const;
    /// A line of help or busctl.
    std::string Answer(const std::string& text) const;

private:
    /// Returns the form of a line that is wanted.
    std::string Line(const tools::Json& object, const std::string& text) const;
    std::string Paint(const std::string& text, const char* colour) const;

    bool m_json;
    bool m_colours;
};

}  // namespace applist::sim
