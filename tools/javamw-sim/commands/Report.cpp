// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "commands/Report.h"

#include "JsonLine.h"
#include "Output.h"

namespace applist::sim {
namespace {

class Text : public Report {
public:
    explicit Text(bool colours) : m_colours(colours) {}

    std::string Connected(const std::string& application) const override {
        return Paint("connected", colour::GOOD) + ' ' + application;
    }
    std::string Disconnected(const std::string& application) const override {
        return Paint("disconnected", colour::QUIET) + ' ' + application;
    }
    std::string Filled(const std::string& application, size_t items) const override {
        return Paint("filled", colour::GOOD) + ' ' + application + " with " +
               std::to_string(items) + " items";
    }
    std::string Updated(const std::string& application, const ListUpdate& update) const override {
        return Paint("updated", colour::GOOD) + ' ' + application + ": " +
               std::to_string(update.added) + " added, " + std::to_string(update.removed) +
               " removed, " + std::to_string(update.renamed) + " renamed";
    }
    std::string Event(const std::string& /*application*/, const Notification& notification,
                      const Selection& selection) const override {
        return Paint(DescribeNotification(notification), colour::STRONG) + " selection " +
               Describe(selection);
    }
    std::string ItemOfReply(const Item& item) const override { return ItemLine(item); }

private:
    std::string Paint(const std::string& text, const char* colour) const {
        return m_colours ? Painted(text, colour) : text;
    }
    std::string Describe(const Selection& selection) const {
        if (!selection.problem.empty()) {
            return Paint("unreadable: " + OneLine(selection.problem), colour::BAD);
        }
        return selection.item ? ItemLine(*selection.item) : "none";
    }

    bool m_colours;
};

class Json : public Report {
public:
    std::string Connected(const std::string& application) const override {
        return Line("connected", application).Text();
    }
    std::string Disconnected(const std::string& application) const override {
        return Line("disconnected", application).Text();
    }
    std::string Filled(const std::string& application, size_t items) const override {
        return Line("filled", application).Add("items", static_cast<int64_t>(items)).Text();
    }
    std::string Updated(const std::string& application, const ListUpdate& update) const override {
        JsonLine line = Line("updated", application);
        line.Add("added", static_cast<int64_t>(update.added));
        line.Add("removed", static_cast<int64_t>(update.removed));
        return line.Add("renamed", static_cast<int64_t>(update.renamed)).Text();
    }
    std::string Event(const std::string& application, const Notification& notification,
                      const Selection& selection) const override {
        JsonLine line = Line("event", application);
        line.Add("number", static_cast<int64_t>(notification.event));
        line.Add("name", std::string(NameOf(notification.event)));
        if (notification.payloadSize > 0) {
            line.Add("unexpected_bytes", static_cast<int64_t>(notification.payloadSize));
        }
        line.Add("selection", selection.item);
        if (!selection.problem.empty()) {
            line.Add("problem", selection.problem);
        }
        return line.Text();
    }
    std::string ItemOfReply(const Item& item) const override {
        return JsonLine().AddItem(item).Text();
    }

private:
    static JsonLine Line(const std::string& type, const std::string& application) {
        JsonLine line;
        line.Add("type", type).Add("application", application);
        return line;
    }
};

}  // namespace

Selection SelectionIn(const Result<Items>& reply) {
    if (!reply) {
        return {std::nullopt, reply.error()};
    }
    if (reply->size() != 1) {
        return {std::nullopt, std::to_string(reply->size()) + " items in the reply"};
    }
    const Item& item = reply->front();
    return {item.id.empty() ? std::nullopt : std::optional(item), ""};
}

std::unique_ptr<Report> TextReport(bool colours) {
    return std::make_unique<Text>(colours);
}

std::unique_ptr<Report> JsonReport() {
    return std::make_unique<Json>();
}

}  // namespace applist::sim
