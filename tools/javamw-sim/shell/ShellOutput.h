// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "link/SelectionReader.h"

namespace applist::sim {

/// How a shell's lines look: for people, in colours where a terminal takes them, or as a JSON
/// object each.
class ShellOutput {
public:
    ShellOutput(bool json, bool colours) : m_json(json), m_colours(colours) {}

    std::string Happening(const std::string& middleware, const std::string& happening) const;
    /// An event 3 and the item that the viewer chose.
    std::string Choice(const std::string& middleware, const Notification& event,
                       const SelectedItem& choice) const;
    /// A statement that held.
    std::string Held(const std::string& statement) const;
    std::string Problem(const std::string& statement, const std::string& problem) const;
    /// What a call returned.
    std::vector<std::string> Reply(const Items& items) const;
    /// A line that was asked for.
    std::string Answer(const std::string& text) const;

private:
    std::string In(const char* colour, const std::string& text) const;

    bool m_json;
    bool m_colours;
};

}  // namespace applist::sim
