// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/ShellOutput.h"

#include <algorithm>
#include <iterator>

#include "JsonWriter.h"
#include "Output.h"

namespace applist::sim {
namespace {

std::string Object(const char* first, const std::string& firstText, const char* second,
                   const std::string& secondText) {
    JsonWriter writer;
    writer.Object().Text(first, firstText);
    if (second != nullptr) {
        writer.Text(second, secondText);
    }
    return writer.EndObject().Finish();
}

std::string ReplyObject(const std::string& statement, const Items& items) {
    JsonWriter writer;
    writer.Object().Text("statement", statement).Array("reply");
    for (const Item& item : items) {
        writer.Object().Text("id", item.id).Text("name", item.name).EndObject();
    }
    return writer.EndArray().EndObject().Finish();
}

}  // namespace

std::string ShellOutput::Happening(const std::string& partner, const std::string& happening) const {
    return m_json ? Object("partner", partner, "happening", happening)
                  : In(colour::QUIET, OneLine(partner + ": " + happening));
}

std::string ShellOutput::Held(const std::string& statement) const {
    return m_json ? Object("statement", statement, "result", "held") : In(colour::GOOD, "ok");
}

std::string ShellOutput::Problem(const std::string& statement, const std::string& problem) const {
    return m_json ? Object("statement", statement, "problem", problem)
                  : In(colour::BAD, OneLine(problem));
}

std::vector<std::string> ShellOutput::Reply(const std::string& statement,
                                            const Items& items) const {
    if (m_json) {
        return {ReplyObject(statement, items)};
    }
    std::vector<std::string> lines;
    std::transform(items.begin(), items.end(), std::back_inserter(lines), ItemLine);
    return lines;
}

std::string ShellOutput::Answer(const std::string& text) const {
    return m_json ? Object("answer", text, nullptr, "") : text;
}

std::string ShellOutput::In(const char* colour, const std::string& text) const {
    return m_colours ? Painted(text, colour) : text;
}

}  // namespace applist::sim
