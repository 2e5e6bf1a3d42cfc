// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "middleware/Report.h"

#include <glib.h>

#include <nlohmann/json.hpp>

#include "shared/Output.h"

namespace applist::sim {
namespace {

using tools::Json;
using tools::JsonLine;

// Invalid UTF-8 is replaced in the text, and the bytes are added in hexadecimal.
void AddBytes(Json& object, const std::string& member, const std::string& bytes) {
    object[member] = bytes;
    if (g_utf8_validate_len(bytes.data(), bytes.size(), nullptr) == FALSE) {
        object[member + "_hex"] = ToHex(bytes);
    }
}

void AddItem(Json& object, const Item& item) {
    AddBytes(object, "id", item.id);
    AddBytes(object, "name", item.name);
}

// The member "selection" is absent if selection is null.
Json EventObject(const std::string& application, const Notification& notification,
                 const SelectedItem* selection) {
    Json object{{"type", "event"},
                {"application", application},
                {"number", static_cast<int32_t>(notification.event)},
                {"name", NameOf(notification.event)}};
    if (notification.payloadSize > 0) {
        object["unexpected_bytes"] = notification.payloadSize;
    }
    if (selection != nullptr) {
        // The member exists in any case. It is null if nothing is selected.
        Json& selected = object["selection"];
        if (selection->item) {
            AddItem(selected, *selection->item);
        }
        if (!selection->problem.empty()) {
            object["problem"] = selection->problem;
        }
    }
    return object;
}

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

Json With(const std::string& middleware, Json object) {
    object["middleware"] = middleware;
    return object;
}

}  // namespace

std::string Report::Line(const Json& object, const std::string& text) const {
    return m_json ? JsonLine(object) : text;
}

std::string Report::Paint(const std::string& text, const char* colour) const {
    return m_colours ? tools::Painted(text, colour) : text;
}

std::string Report::Connected(const std::string& application) const {
    return Line(ObjectOf({.kind = Happening::Kind::Connected, .application = application}),
                Paint("connected", tools::colour::GOOD) + ' ' + application);
}

std::string Report::Disconnected(const std::string& application) const {
    return Line(ObjectOf({.kind = Happening::Kind::Disconnected, .application = application}),
                Paint("disconnected", tools::colour::QUIET) + ' ' + application);
}

std::string Report::Filled(const std::string& application, size_t items) const {
    return Line({{"type", "filled"}, {"application", application}, {"items", items}},
                Paint("filled", tools::colour::GOOD) + ' ' + application + " with " +
                    std::to_string(items) + " items");
}

std::string Report::Updated(const std::string& application, const UpdateCounts& counts) const {
    return Line({{"type", "updated"},
                 {"application", application},
                 {"added", counts.added},
                 {"removed", counts.removed},
                 {"renamed", counts.renamed}},
                Paint("updated", tools::colour::GOOD) + ' ' + application + ": " +
                    std::to_string(counts.added) + " added, " + std::to_string(counts.removed) +
                    " removed, " + std::to_string(counts.renamed) + " renamed");
}

std::string Report::Event(const std::string& application, const Notification& notification,
                          const SelectedItem& selection) const {
    const std::string read = DescribeSelection(notification.event, selection);
    return Line(EventObject(application, notification, &selection),
                Paint(DescribeNotification(notification), tools::colour::STRONG) + ' ' +
                    (selection.problem.empty() ? read : Paint(read, tools::colour::BAD)));
}

std::string Report::ItemOfReply(const Item& item) const {
    Json object{{"type", "item"}};
    AddItem(object, item);
    return Line(object, ItemLine(item));
}

std::string Report::Happened(const std::string& middleware, const Happening& happening) const {
    return Line(
        With(middleware, ObjectOf(happening)),
        Paint(tools::OneLine(middleware + ": " + Describe(happening)), tools::colour::QUIET));
}

std::string Report::Choice(const std::string& middleware, const std::string& application,
                           const Notification& event, const SelectedItem& choice) const {
    return Line(With(middleware, EventObject(application, event, &choice)),
                Paint(tools::OneLine(middleware + ": " + DescribeNotification(event)) + ' ' +
                          DescribeSelection(event.event, choice),
                      tools::colour::QUIET));
}

std::string Report::Held(const std::string& statement) const {
    return Line({{"type", "ok"}, {"statement", statement}}, Paint("ok", tools::colour::GOOD));
}

std::string Report::Problem(const std::string& statement, const std::string& problem) const {
    return Line({{"type", "problem"}, {"statement", statement}, {"problem", problem}},
                Paint(tools::OneLine(problem), tools::colour::BAD));
}

std::string Report::Answer(const std::string& text) const {
    return Line({{"type", "answer"}, {"note", text}}, text);
}

}  // namespace applist::sim
