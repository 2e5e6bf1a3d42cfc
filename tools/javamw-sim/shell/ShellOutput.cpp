// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/ShellOutput.h"

#include <algorithm>
#include <iterator>

#include "JsonLine.h"
#include "Output.h"

namespace applist::sim {
namespace {

JsonLine Object(const std::string& type) {
    JsonLine line;
    line.Add("type", type);
    return line;
}

std::string ItemObject(const Item& item) {
    return Object("item").AddItem(item).Text();
}

}  // namespace

std::string ShellOutput::Happening(const std::string& partner, const std::string& happening) const {
    return m_json ? Object("happening").Add("partner", partner).Add("text", happening).Text()
                  : In(colour::QUIET, OneLine(partner + ": " + happening));
}

std::string ShellOutput::Held(const std::string& statement) const {
    return m_json ? Object("held").Add("statement", statement).Text() : In(colour::GOOD, "ok");
}

std::string ShellOutput::Problem(const std::string& statement, const std::string& problem) const {
    return m_json ? Object("problem").Add("statement", statement).Add("text", problem).Text()
                  : In(colour::BAD, OneLine(problem));
}

std::vector<std::string> ShellOutput::Reply(const Items& items) const {
    std::vector<std::string> lines;
    std::transform(items.begin(), items.end(), std::back_inserter(lines),
                   m_json ? ItemObject : ItemLine);
    return lines;
}

std::string ShellOutput::Answer(const std::string& text) const {
    return m_json ? Object("answer").Add("text", text).Text() : text;
}

std::string ShellOutput::In(const char* colour, const std::string& text) const {
    return m_colours ? Painted(text, colour) : text;
}

}  // namespace applist::sim
