// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/ApplicationFormats.h"

#include <algorithm>
#include <glib.h>

#include <nlohmann/json.hpp>

#include "common/Output.h"
#include "shared/Json.h"

namespace applist::sim {
namespace {

using tools::Json;
using Row = std::vector<std::string>;

// Spaces between two columns.
constexpr size_t GAP = 2;

// Returns the width in terminal columns.
size_t Width(const std::string& text) {
    size_t width = 0;
    for (const char* at = text.c_str(); *at != '\0'; at = g_utf8_next_char(at)) {
        const gunichar character = g_utf8_get_char(at);
        if (g_unichar_iszerowidth(character) == FALSE) {
            width += g_unichar_iswide(character) != FALSE ? 2 : 1;
        }
    }
    return width;
}

std::string OrDash(const std::string& text) {
    return text.empty() ? "-" : OneLine(text);
}

std::string NamesText(const std::vector<ApplicationName>& names) {
    std::string text;
    for (const ApplicationName& name : names) {
        text += (text.empty() ? "" : "; ") + name.language + '=' + name.text;
    }
    return text;
}

std::string Joined(const std::vector<std::string>& words, const char* separator) {
    std::string text;
    for (const std::string& word : words) {
        text += (text.empty() ? "" : separator) + word;
    }
    return text;
}

std::string VersionText(const ApplicationProfile& profile) {
    return std::to_string(profile.major) + '.' + std::to_string(profile.minor) + '.' +
           std::to_string(profile.micro);
}

/// Returns the conditions in the order of the fields; empty texts for absent values.
Row ConditionTexts(const ReceiverConditions& conditions) {
    std::vector<std::string> profiles;
    for (const ApplicationProfile& profile : conditions.profiles) {
        profiles.push_back(std::to_string(profile.profile) + '/' + VersionText(profile));
    }
    std::vector<std::string> ratings;
    for (const ParentalRating& rating : conditions.ratings) {
        ratings.push_back(rating.country + '=' + std::to_string(rating.rating));
    }
    const auto bound = conditions.serviceBound;
    // The order must match the last fields of ApplicationFields().
    return {Joined(profiles, " "),
            bound ? *bound ? "yes" : "no" : "",
            conditions.usage ? std::to_string(*conditions.usage) : "",
            Joined(conditions.boundaries, " "),
            Joined(ratings, " "),
            Joined(conditions.transports, " ")};
}

std::string WhyText(const ListedApplication& application) {
    return application.against.empty() ? "offered"
                                       : "not offered: " + Joined(application.against, ", ");
}

Row CellsOf(const ListedApplication& application, bool why) {
    Row row{application.service ? std::to_string(*application.service) : "-",
            std::to_string(application.organisation),
            std::to_string(application.id),
            OrDash(TypeName(application.type.value_or(0))),
            application.control,
            std::to_string(application.visibility),
            std::to_string(application.priority),
            OrDash(application.name),
            OrDash(NamesText(application.names)),
            OrDash(application.location)};
    for (const std::string& text : ConditionTexts(application.conditions)) {
        row.push_back(OrDash(text));
    }
    if (why) {
        row.push_back(WhyText(application));
    }
    return row;
}

std::string Line(const Row& row, const std::vector<size_t>& widths) {
    std::string line;
    for (size_t column = 0; column < row.size(); ++column) {
        line += row[column];
        const size_t filled = Width(row[column]);
        // Padding counts terminal columns. The field width of printf() counts bytes.
        line.append(widths[column] - filled + GAP, ' ');
    }
    // The last column is padded like the others, which would leave spaces at the end of the line.
    line.erase(line.find_last_not_of(' ') + 1);
    return line + '\n';
}

}  // namespace

std::vector<std::string> ApplicationFields(bool why) {
    std::vector<std::string> fields{"service", "organisation_id", "application_id", "type",
                                    "control", "visibility",      "priority",       "name",
                                    "names",   "location",        "profiles",       "service_bound",
                                    "usage",   "boundaries",      "ratings",        "transports"};
    if (why) {
        fields.emplace_back("why");
    }
    return fields;
}

std::string FormatTable(const std::vector<ListedApplication>& applications, bool why) {
    std::vector<Row> rows{ApplicationFields(why)};
    for (std::string& title : rows.front()) {
        std::transform(title.begin(), title.end(), title.begin(), g_ascii_toupper);
    }
    for (const ListedApplication& application : applications) {
        rows.push_back(CellsOf(application, why));
    }
    std::vector<size_t> widths(rows.front().size(), 0);
    for (const Row& row : rows) {
        for (size_t column = 0; column < row.size(); ++column) {
            widths[column] = std::max(widths[column], Width(row[column]));
        }
    }
    std::string text;
    for (const Row& row : rows) {
        text += Line(row, widths);
    }
    return text;
}

namespace {

Json NumberOrNull(std::optional<uint32_t> number) {
    return number ? Json(*number) : Json();
}

Json ObjectOf(const std::vector<ApplicationName>& names) {
    Json object = Json::object();
    for (const ApplicationName& name : names) {
        object[name.language] = name.text;
    }
    return object;
}

std::vector<Json> ConditionValues(const ReceiverConditions& conditions) {
    Json profiles = Json::array();
    for (const ApplicationProfile& profile : conditions.profiles) {
        profiles.push_back({{"profile", profile.profile}, {"version", VersionText(profile)}});
    }
    Json ratings = Json::object();
    for (const ParentalRating& rating : conditions.ratings) {
        ratings[rating.country] = rating.rating;
    }
    const auto bound = conditions.serviceBound;
    return {std::move(profiles),
            bound ? Json(*bound) : Json(),
            NumberOrNull(conditions.usage),
            conditions.boundaries,
            std::move(ratings),
            conditions.transports};
}

Json ObjectOf(const ListedApplication& application, bool why) {
    std::vector<Json> values{NumberOrNull(application.service),
                             application.organisation,
                             application.id,
                             NumberOrNull(application.type),
                             application.control,
                             application.visibility,
                             application.priority,
                             application.name,
                             ObjectOf(application.names),
                             application.location};
    for (Json& value : ConditionValues(application.conditions)) {
        values.push_back(std::move(value));
    }
    if (why) {
        values.emplace_back(WhyText(application));
    }
    // Values and fields have the same order, so each value is assigned to the name at its index.
    const std::vector<std::string> fields = ApplicationFields(why);
    Json object;
    for (size_t field = 0; field < values.size(); ++field) {
        object[fields[field]] = values[field];
    }
    return object;
}

std::string NumberOr(std::optional<uint32_t> number, const char* otherwise) {
    return number ? std::to_string(*number) : otherwise;
}

std::string CsvCell(const std::string& text) {
    // RFC 4180 asks for quotes around a cell that contains one of these characters.
    if (text.find_first_of(",\"\r\n") == std::string::npos) {
        return text;
    }
    std::string quoted = "\"";
    for (const char character : text) {
        quoted += character;
        // RFC 4180 writes a quote inside a quoted cell twice.
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
    // RFC 4180 ends each line with CR LF.
    return line + "\r\n";
}

}  // namespace

std::string FormatJson(const std::vector<ListedApplication>& applications, bool why) {
    Json objects = Json::array();
    for (const ListedApplication& application : applications) {
        objects.push_back(ObjectOf(application, why));
    }
    return tools::JsonText(objects);
}

std::string FormatCsv(const std::vector<ListedApplication>& applications, bool why) {
    std::string text = CsvLine(ApplicationFields(why));
    for (const ListedApplication& application : applications) {
        Row row{NumberOr(application.service, ""),
                std::to_string(application.organisation),
                std::to_string(application.id),
                NumberOr(application.type, ""),
                application.control,
                std::to_string(application.visibility),
                std::to_string(application.priority),
                application.name,
                tools::JsonLine(ObjectOf(application.names)),
                application.location};
        for (std::string& condition : ConditionTexts(application.conditions)) {
            row.push_back(std::move(condition));
        }
        if (why) {
            row.push_back(WhyText(application));
        }
        text += CsvLine(row);
    }
    return text;
}

}  // namespace applist::sim
