// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "middleware/Middleware.h"

namespace applist::sim {

/// Formats the lines of a shell: for people, in colours if the terminal takes them, or as one JSON
/// object each.
class ShellOutput {
public:
    ShellOutput(bool json, bool colours) : m_json(json), m_colours(colours) {}

    std::string Show(const std::string& middleware, const Happening& happening) const;
    /// An event 3 and the item that the viewer chose.
    std::string Choice(const std::string& middleware, const std::string& application,
                       const Notification& event, const SelectedItem& choice) const;
    /// A statement that succeeded.
    std::string Held(const std::string& statement) const;
    std::string Problem(const std::string& statement, const std::string& problem) const;
    /// The reply to a call.
    std::vector<std::string> Reply(const Items& items) const;
    /// A line of help or busctl.
    std::string Answer(const std::string& text) const;

private:
    std::string In(const char* colour, const std::string& text) const;

    bool m_json;
    bool m_colours;
};

}  // namespace applist::sim
