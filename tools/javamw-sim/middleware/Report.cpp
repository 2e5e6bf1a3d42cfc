// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "middleware/Report.h"

#include <glib.h>

#include "common/JsonWriter.h"
#include "common/Output.h"
#include "link/Protocol.h"

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
    std::string Updated(const std::string& application, const UpdateCounts& counts) const override {
        return Paint("updated", colour::GOOD) + ' ' + application + ": " +
               std::to_string(counts.added) + " added, " + std::to_string(counts.removed) +
               " removed, " + std::to_string(counts.renamed) + " renamed";
    }
    std::string Event(const std::string& /*application*/, const Notification& notification,
                      const SelectedItem& selection) const override {
        const std::string read = DescribeSelection(notification.event, selection);
        return Paint(DescribeNotification(notification), colour::STRONG) + ' ' +
               (selection.problem.empty() ? read : Paint(read, colour::BAD));
    }
    std::string ItemOfReply(const Item& item) const override { return ItemLine(item); }

private:
    std::string Paint(const std::string& text, const char* colour) const {
        return m_colours ? Painted(text, colour) : text;
    }

    bool m_colours;
};

// Invalid UTF-8 is replaced in the text, and the bytes are added in hexadecimal.
void WriteBytes(JsonWriter& json, const std::string& member, const std::string& bytes) {
    json.Text(member.c_str(), bytes);
    if (g_utf8_validate_len(bytes.data(), bytes.size(), nullptr) == FALSE) {
        json.Text((member + "_hex").c_str(), ToHex(bytes));
    }
}

void WriteItem(JsonWriter& json, const char* member, const Item& item) {
    json.Object(member);
    WriteBytes(json, "id", item.id);
    WriteBytes(json, "name", item.name);
    json.EndObject();
}

class Json : public Report {
public:
    std::string Connected(const std::string& application) const override {
        return Begin("connected", application).EndObject().Finish();
    }
    std::string Disconnected(const std::string& application) const override {
        return Begin("disconnected", application).EndObject().Finish();
    }
    std::string Filled(const std::string& application, size_t items) const override {
        return Begin("filled", application)
            .Number("items", static_cast<int64_t>(items))
            .EndObject()
            .Finish();
    }
    std::string Updated(const std::string& application, const UpdateCounts& counts) const override {
        return Begin("updated", application)
            .Number("added", static_cast<int64_t>(counts.added))
            .Number("removed", static_cast<int64_t>(counts.removed))
            .Number("renamed", static_cast<int64_t>(counts.renamed))
            .EndObject()
            .Finish();
    }
    std::string Event(const std::string& application, const Notification& notification,
                      const SelectedItem& selection) const override {
        JsonWriter json = Begin("event", application);
        json.Number("number", static_cast<int64_t>(notification.event));
        json.Text("name", NameOf(notification.event));
        if (notification.payloadSize > 0) {
            json.Number("unexpected_bytes", static_cast<int64_t>(notification.payloadSize));
        }
        if (selection.item) {
            WriteItem(json, "selection", *selection.item);
        } else {
            json.Null("selection");
        }
        return json.TextUnlessEmpty("problem", selection.problem).EndObject().Finish();
    }
    std::string ItemOfReply(const Item& item) const override {
        JsonWriter json;
        WriteItem(json, nullptr, item);
        return json.Finish();
    }

private:
    static JsonWriter Begin(const char* type, const std::string& application) {
        JsonWriter json;
        json.Object().Text("type", type).Text("application", application);
        return json;
    }
};

}  // namespace

std::unique_ptr<Report> TextReport(bool colours) {
    return std::make_unique<Text>(colours);
}

std::unique_ptr<Report> JsonReport() {
    return std::make_unique<Json>();
}

}  // namespace applist::sim
