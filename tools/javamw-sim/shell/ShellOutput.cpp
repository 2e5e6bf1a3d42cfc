// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/ShellOutput.h"

#include <algorithm>
#include <iterator>

#include "common/JsonWriter.h"
#include "common/Output.h"

namespace applist::sim {
namespace {

JsonWriter Begin(const char* type) {
    JsonWriter writer;
    writer.Object().Text("type", type);
    return writer;
}

std::string ItemObject(const Item& item) {
    return Begin("item").Text("id", item.id).Text("name", item.name).EndObject().Finish();
}

}  // namespace

std::string ShellOutput::Happening(const std::string& middleware,
                                   const std::string& happening) const {
    return m_json ? Begin("happening")
                        .Text("partner", middleware)
                        .Text("text", happening)
                        .EndObject()
                        .Finish()
                  : In(colour::QUIET, OneLine(middleware + ": " + happening));
}

std::string ShellOutput::Choice(const std::string& middleware, const Notification& event,
                                const SelectedItem& choice) const {
    if (!m_json) {
        return In(colour::QUIET, OneLine(middleware + ": " + DescribeNotification(event)) + ' ' +
                                     DescribeSelection(event.event, choice));
    }
    JsonWriter writer = Begin("happening");
    writer.Text("partner", middleware).Text("text", DescribeNotification(event));
    if (choice.item) {
        writer.Object("selection").Text("id", choice.item->id).Text("name", choice.item->name);
        writer.EndObject();
    } else {
        writer.Null("selection");
    }
    return writer.TextUnlessEmpty("problem", choice.problem).EndObject().Finish();
}

std::string ShellOutput::Held(const std::string& statement) const {
    return m_json ? Begin("held").Text("statement", statement).EndObject().Finish()
                  : In(colour::GOOD, "ok");
}

std::string ShellOutput::Problem(const std::string& statement, const std::string& problem) const {
    return m_json ? Begin("problem")
                        .Text("statement", statement)
                        .Text("text", problem)
                        .EndObject()
                        .Finish()
                  : In(colour::BAD, OneLine(problem));
}

std::vector<std::string> ShellOutput::Reply(const Items& items) const {
    std::vector<std::string> lines;
    std::transform(items.begin(), items.end(), std::back_inserter(lines),
                   m_json ? ItemObject : ItemLine);
    return lines;
}

std::string ShellOutput::Answer(const std::string& text) const {
    return m_json ? Begin("answer").Text("text", text).EndObject().Finish() : text;
}

std::string ShellOutput::In(const char* colour, const std::string& text) const {
    return m_colours ? Painted(text, colour) : text;
}

}  // namespace applist::sim
