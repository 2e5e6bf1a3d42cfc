// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/ApplicationList.h"

#include <algorithm>
#include <glib.h>
#include <iterator>
#include <map>
#include <set>
#include <tuple>
#include <utility>

#include <nlohmann/json.hpp>

#include "feed/DisplayNames.h"
#include "shared/Output.h"

namespace applist::sim {
namespace {

std::vector<ApplicationName> NamesByLanguage(const Application& application) {
    std::vector<ApplicationName> names;
    for (const ApplicationName& sent : application.names) {
        ApplicationName name{CleanLanguage(sent.language), ValidUtf8(sent.text)};
        if (name.language.empty()) {
            name.language = "und";  // ISO 639-2 for an unknown language
        }
        const auto known = std::ranges::find(names, name.language, &ApplicationName::language);
        // The first name of each language is used if the broadcast repeats a language.
        if (known == names.end()) {
            names.push_back(std::move(name));
        }
    }
    return names;
}

ListedApplication Describe(const BroadcastService& service, const ApplicationTable& table,
                           const Application& application,
                           const std::vector<std::string>& languages) {
    ListedApplication listed{service.id, table.type, application};
    listed.name = ValidUtf8(PreferredName(application.names, languages));
    // Bytes from the broadcast may be invalid, and the output must be UTF-8.
    listed.application.names = NamesByLanguage(application);
    listed.application.location = ValidUtf8(application.location);
    for (std::string& boundary : listed.application.conditions.boundaries) {
        boundary = ValidUtf8(boundary);
    }
    for (ParentalRating& rating : listed.application.conditions.ratings) {
        rating.country = ValidUtf8(rating.country);
    }
    // The list gives every reason, so hidden applications and trials are not excused here.
    listed.against = ReasonsAgainst(table, application, false);
    return listed;
}

using Key = std::tuple<std::optional<uint16_t>, uint32_t, uint16_t>;

Key KeyOf(const BroadcastService& service, const Application& application) {
    return {service.id, application.organisation, application.id};
}

}  // namespace

std::vector<ListedApplication> ListApplications(const Broadcast& broadcast,
                                                const BroadcastFilter& filter) {
    std::vector<ListedApplication> list;
    std::map<Key, size_t> places;
    for (const Snapshot& snapshot : broadcast.snapshots) {
        ForEachApplication(SelectServices(snapshot, filter),
                           [&](const auto& service, const auto& table, const auto& application) {
                               const auto [place, isNew] =
                                   places.try_emplace(KeyOf(service, application), list.size());
                               // A later snapshot replaces the description, and the application
                               // keeps its place.
                               if (isNew) {
                                   list.emplace_back();
                               }
                               list[place->second] =
                                   Describe(service, table, application, filter.languages);
                           });
    }
    // A recording may contain applications that its last tables have withdrawn.
    ForEachApplication(broadcast.snapshots.back().services,
                       [&](const auto& service, const auto&, const auto& application) {
                           places.erase(KeyOf(service, application));
                       });
    for (const auto& [key, place] : places) {
        list[place].against.emplace_back("not in the last tables");
    }
    return list;
}

namespace {

using tools::Json;
using Row = std::vector<std::string>;

// Spaces between two columns.
constexpr size_t GAP = 2;

/// A value of an application in each format.
struct Field {
    const char* name;
    Json json;
    std::string csv;
    std::string cell;  ///< For people.
};

Field TextField(const char* name, const std::string& text) {
    return {name, text, text, text};
}

Field NumberField(const char* name, std::optional<uint32_t> number) {
    const std::string text = number ? std::to_string(*number) : "";
    return {name, number ? Json(*number) : Json(), text, text};
}

Field ListField(const char* name, const std::vector<std::string>& texts) {
    const std::string text = tools::Joined(texts, " ");
    return {name, texts, text, text};
}

Field TypeField(uint16_t type) {
    Field field = NumberField("type", type != 0 ? std::optional(type) : std::nullopt);
    field.cell = TypeName(type);
    return field;
}

Field NamesField(const std::vector<ApplicationName>& names) {
    Json object = Json::object();
    for (const ApplicationName& name : names) {
        object[name.language] = name.text;
    }
    return {"names", object, tools::JsonLine(object),
            tools::Joined(names, "; ",
                          [](const auto& name) { return name.language + '=' + name.text; })};
}

Field ProfilesField(const std::vector<ApplicationProfile>& profiles) {
    const auto version = [](const ApplicationProfile& profile) {
        return std::to_string(profile.major) + '.' + std::to_string(profile.minor) + '.' +
               std::to_string(profile.micro);
    };
    Json objects = Json::array();
    for (const ApplicationProfile& profile : profiles) {
        objects.push_back({{"profile", profile.profile}, {"version", version(profile)}});
    }
    const std::string text = tools::Joined(profiles, " ", [&](const ApplicationProfile& profile) {
        return std::to_string(profile.profile) + '/' + version(profile);
    });
    return {"profiles", objects, text, text};
}

Field BoundField(std::optional<bool> bound) {
    const char* text = !bound ? "" : *bound ? "yes" : "no";
    return {"service_bound", bound ? Json(*bound) : Json(), text, text};
}

Field RatingsField(const std::vector<ParentalRating>& ratings) {
    Json object = Json::object();
    for (const ParentalRating& rating : ratings) {
        object[rating.country] = rating.rating;
    }
    const std::string text = tools::Joined(ratings, " ", [](const ParentalRating& rating) {
        return rating.country + '=' + std::to_string(rating.rating);
    });
    return {"ratings", object, text, text};
}

std::vector<Field> FieldsOf(const ListedApplication& listed, bool why) {
    const Application& application = listed.application;
    const ReceiverConditions& conditions = application.conditions;
    std::vector<Field> fields{NumberField("service", listed.service),
                              NumberField("organisation_id", application.organisation),
                              NumberField("application_id", application.id),
                              TypeField(listed.type),
                              TextField("control", ControlName(application.controlCode)),
                              NumberField("visibility", application.visibility),
                              NumberField("priority", application.priority),
                              TextField("name", listed.name),
                              NamesField(application.names),
                              TextField("location", application.location),
                              ProfilesField(conditions.profiles),
                              BoundField(conditions.serviceBound),
                              NumberField("usage", conditions.usage),
                              ListField("boundaries", conditions.boundaries),
                              RatingsField(conditions.ratings),
                              ListField("transports", conditions.transports)};
    if (why) {
        const auto& against = listed.against;
        fields.push_back(TextField(
            "why", against.empty() ? "offered" : "not offered: " + tools::Joined(against, ", ")));
    }
    return fields;
}

/// Returns the names of the fields, then those of each application as cell returns them.
std::vector<Row> RowsOf(const std::vector<ListedApplication>& applications, bool why,
                        std::string (*cell)(const Field& field)) {
    const auto row = [why](const ListedApplication& application, auto text) {
        Row texts;
        for (const Field& field : FieldsOf(application, why)) {
            texts.push_back(text(field));
        }
        return texts;
    };
    std::vector<Row> rows{row({}, [](const Field& field) { return std::string(field.name); })};
    for (const ListedApplication& application : applications) {
        rows.push_back(row(application, cell));
    }
    return rows;
}

std::string Line(const Row& row, const std::vector<size_t>& widths) {
    std::string line;
    for (size_t column = 0; column < row.size(); ++column) {
        line += row[column];
        const size_t filled = tools::ColumnsOf(row[column]);
        // Padding counts terminal columns. The field width of printf() counts bytes.
        line.append(widths[column] - filled + GAP, ' ');
    }
    // The last column is padded like the others, which would leave spaces at the end of the line.
    line.erase(line.find_last_not_of(' ') + 1);
    return line + '\n';
}

std::string CsvCell(const std::string& text) {
    // RFC 4180 asks for quotes around a cell that contains one of these characters, in which a
    // quote is written twice.
    return text.find_first_of(",\"\r\n") == std::string::npos
               ? text
               : '"' + tools::Replaced(text, "\"", "\"\"") + '"';
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

std::string FormatTable(const std::vector<ListedApplication>& applications, bool why) {
    std::vector<Row> rows = RowsOf(applications, why, [](const Field& field) {
        return field.cell.empty() ? "-" : tools::OneLine(field.cell);
    });
    std::vector<size_t> widths(rows.front().size(), 0);
    for (std::string& title : rows.front()) {
        std::ranges::transform(title, title.begin(), g_ascii_toupper);
    }
    for (const Row& row : rows) {
        for (size_t column = 0; column < row.size(); ++column) {
            widths[column] = std::max(widths[column], tools::ColumnsOf(row[column]));
        }
    }
    std::string text;
    for (const Row& row : rows) {
        text += Line(row, widths);
    }
    return text;
}

std::string FormatJson(const std::vector<ListedApplication>& applications, bool why) {
    Json objects = Json::array();
    for (const ListedApplication& application : applications) {
        Json object;
        for (Field& field : FieldsOf(application, why)) {
            object[field.name] = std::move(field.json);
        }
        objects.push_back(std::move(object));
    }
    return tools::JsonText(objects);
}

std::string FormatCsv(const std::vector<ListedApplication>& applications, bool why) {
    std::string text;
    for (const Row& row : RowsOf(applications, why, [](const Field& field) { return field.csv; })) {
        text += CsvLine(row);
    }
    return text;
}

}  // namespace applist::sim
