// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "JsonWriter.h"
#include "feed/ApplicationList.h"

namespace applist::sim {
namespace {

void AddNames(JsonWriter& json, const char* member, const std::vector<ApplicationName>& names) {
    json.Object(member);
    for (const ApplicationName& name : names) {
        json.Text(name.language.c_str(), name.text);
    }
    json.EndObject();
}

void AddApplication(JsonWriter& json, const ListedApplication& application) {
    auto field = ApplicationFields().begin();
    const auto next = [&] { return (field++)->c_str(); };
    json.Object();
    json.NumberOrNull(next(), application.service);
    json.Number(next(), application.organisation);
    json.Number(next(), application.id);
    json.NumberOrNull(next(), application.type);
    json.Text(next(), application.control);
    json.Number(next(), application.visibility);
    json.Number(next(), application.priority);
    json.Text(next(), application.name);
    AddNames(json, next(), application.names);
    json.Text(next(), application.location);
    json.EndObject();
}

std::string NamesText(const std::vector<ApplicationName>& names) {
    JsonWriter json;
    AddNames(json, nullptr, names);
    return json.Finish();
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
    JsonWriter json;
    json.Array();
    for (const ListedApplication& application : applications) {
        AddApplication(json, application);
    }
    return json.EndArray().FinishIndented() + '\n';
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
