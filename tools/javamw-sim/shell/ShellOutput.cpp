// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/ShellOutput.h"

#include <algorithm>
#include <iterator>

#include <nlohmann/json.hpp>

#include "common/Output.h"
#include "middleware/Report.h"

namespace applist::sim {
namespace {

using tools::Json;
using tools::JsonLine;

Json ObjectOf(const Happening& happening) {
    const std::string& application = happening.application;
    switch (happening.kind) {
        case Happening::Kind::Connected:
            return {{"type", "connected"}, {"application", application}};
        case Happening::Kind::Disconnected:
            return {{"type", "disconnected"}, {"application", application}};
        case Happening::Kind::Notified:
            if (const auto event = DecodeNotification(happening.message)) {
                return EventObject(application, *event, nullptr);
            }
            break;
        case Happening::Kind::Called:
            return {{"type", "call"},
                    {"application", application},
                    {"bytes", ToHex(happening.message)}};
        default:
            break;
    }
    return {{"type", "problem"}, {"problem", Describe(happening)}};
}

std::string With(const std::string& middleware, Json object) {
    object["middleware"] = middleware;
    return JsonLine(object);
}

}  // namespace

std::string ShellOutput::Show(const std::string& middleware, const Happening& happening) const {
    return m_json ? With(middleware, ObjectOf(happening))
                  : In(colour::QUIET, OneLine(middleware + ": " + Describe(happening)));
}

std::string ShellOutput::Choice(const std::string& middleware, const std::string& application,
                                const Notification& event, const SelectedItem& choice) const {
    return m_json ? With(middleware, EventObject(application, event, &choice))
                  : In(colour::QUIET, OneLine(middleware + ": " + DescribeNotification(event)) +
                                          ' ' + DescribeSelection(event.event, choice));
}

std::string ShellOutput::Held(const std::string& statement) const {
    return m_json ? JsonLine({{"type", "ok"}, {"statement", statement}}) : In(colour::GOOD, "ok");
}

std::string ShellOutput::Problem(const std::string& statement, const std::string& problem) const {
    return m_json ? JsonLine({{"type", "problem"}, {"statement", statement}, {"problem", problem}})
                  : In(colour::BAD, OneLine(problem));
}

std::vector<std::string> ShellOutput::Reply(const Items& items) const {
    std::vector<std::string> lines;
    std::transform(items.begin(), items.end(), std::back_inserter(lines), [this](const Item& item) {
        return m_json ? JsonLine(ItemObject(item)) : ItemLine(item);
    });
    return lines;
}

std::string ShellOutput::Answer(const std::string& text) const {
    return m_json ? JsonLine({{"type", "answer"}, {"note", text}}) : text;
}

std::string ShellOutput::In(const char* colour, const std::string& text) const {
    return m_colours ? Painted(text, colour) : text;
}

}  // namespace applist::sim
