// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <glib.h>

#include "Output.h"
#include "feed/ApplicationList.h"

namespace applist::sim {
namespace {

using Row = std::vector<std::string>;

constexpr size_t GAP = 2;

// In columns of a terminal.
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

Row CellsOf(const ListedApplication& application) {
    return {application.service ? std::to_string(*application.service) : "-",
            std::to_string(application.organisation),
            std::to_string(application.id),
            OrDash(TypeName(application.type.value_or(0))),
            application.control,
            std::to_string(application.visibility),
            std::to_string(application.priority),
            OrDash(application.name),
            OrDash(NamesText(application.names)),
            OrDash(application.location)};
}

std::string Line(const Row& row, const std::vector<size_t>& widths) {
    std::string line;
    for (size_t column = 0; column < row.size(); ++column) {
        line += row[column];
        const size_t filled = Width(row[column]);
        line.append(widths[column] - filled + GAP, ' ');
    }
    line.erase(line.find_last_not_of(' ') + 1);
    return line + '\n';
}

}  // namespace

std::string FormatTable(const std::vector<ListedApplication>& applications) {
    std::vector<Row> rows{ApplicationFields()};
    for (std::string& title : rows.front()) {
        std::transform(title.begin(), title.end(), title.begin(), g_ascii_toupper);
    }
    std::transform(applications.begin(), applications.end(), std::back_inserter(rows), CellsOf);
    std::vector<size_t> widths(ApplicationFields().size(), 0);
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

}  // namespace applist::sim
