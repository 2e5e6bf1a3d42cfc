// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <glib.h>
#include <memory>

#include <json-glib/json-glib.h>

#include "feed/ApplicationList.h"

namespace applist::sim {
namespace {

struct UnrefObject {
    void operator()(void* object) const { g_object_unref(object); }
};
struct FreeNode {
    void operator()(JsonNode* node) const { json_node_unref(node); }
};
using Builder = std::unique_ptr<JsonBuilder, UnrefObject>;
using Generator = std::unique_ptr<JsonGenerator, UnrefObject>;
using Node = std::unique_ptr<JsonNode, FreeNode>;

std::string Text(JsonBuilder* builder, bool pretty) {
    const Node root(json_builder_get_root(builder));
    const Generator generator(json_generator_new());
    json_generator_set_root(generator.get(), root.get());
    json_generator_set_pretty(generator.get(), pretty ? TRUE : FALSE);
    char* text = json_generator_to_data(generator.get(), nullptr);
    std::string copy = text;
    g_free(text);
    return copy;
}

void AddNumber(JsonBuilder* builder, std::optional<uint32_t> number) {
    if (number) {
        json_builder_add_int_value(builder, *number);
    } else {
        json_builder_add_null_value(builder);
    }
}

void AddNames(JsonBuilder* builder, const std::vector<ApplicationName>& names) {
    json_builder_begin_object(builder);
    for (const ApplicationName& name : names) {
        json_builder_set_member_name(builder, name.language.c_str());
        json_builder_add_string_value(builder, name.text.c_str());
    }
    json_builder_end_object(builder);
}

void AddApplication(JsonBuilder* builder, const ListedApplication& application) {
    auto field = ApplicationFields().begin();
    const auto next = [&] { json_builder_set_member_name(builder, (field++)->c_str()); };
    json_builder_begin_object(builder);
    next();
    AddNumber(builder, application.service);
    next();
    AddNumber(builder, application.organisation);
    next();
    AddNumber(builder, application.id);
    next();
    AddNumber(builder, application.type);
    next();
    json_builder_add_string_value(builder, application.control.c_str());
    next();
    AddNumber(builder, application.visibility);
    next();
    AddNumber(builder, application.priority);
    next();
    json_builder_add_string_value(builder, application.name.c_str());
    next();
    AddNames(builder, application.names);
    next();
    json_builder_add_string_value(builder, application.location.c_str());
    json_builder_end_object(builder);
}

std::string NamesText(const std::vector<ApplicationName>& names) {
    const Builder builder(json_builder_new());
    AddNames(builder.get(), names);
    return Text(builder.get(), false);
}

std::string NumberOr(std::optional<uint32_t> number, const char* otherwise) {
    return number ? std::to_string(*number) : otherwise;
}

using Row = std::vector<std::string>;

std::string CsvCell(const std::string& text) {
    if (text.find_first_of(",\"\r\n") == std::string::npos) {
        return text;
    }
    std::string quoted = "\"";
    for (const char character : text) {
        quoted += character;
        if (character == '"') {
            quoted += '"';
        }
    }
    return quoted + '"';
}

std::string CsvLine(const Row& row) {
    std::string line;
    for (const std::string& cell : row) {
        line += (&cell == &row.front() ? "" : ",") + CsvCell(cell);
    }
    return line + "\r\n";
}

}  // namespace

std::string FormatJson(const std::vector<ListedApplication>& applications) {
    const Builder builder(json_builder_new());
    json_builder_begin_array(builder.get());
    for (const ListedApplication& application : applications) {
        AddApplication(builder.get(), application);
    }
    json_builder_end_array(builder.get());
    return Text(builder.get(), true) + '\n';
}

std::string FormatCsv(const std::vector<ListedApplication>& applications) {
    std::string text = CsvLine(ApplicationFields());
    for (const ListedApplication& application : applications) {
        text += CsvLine(
            {NumberOr(application.service, ""), std::to_string(application.organisation),
             std::to_string(application.id), NumberOr(application.type, ""), application.control,
             std::to_string(application.visibility), std::to_string(application.priority),
             application.name, NamesText(application.names), application.location});
    }
    return text;
}

}  // namespace applist::sim
