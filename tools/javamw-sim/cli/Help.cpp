// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/Help.h"

#include <algorithm>
#include <cctype>
#include <numeric>
#include <utility>

namespace applist::sim {
namespace {

constexpr const char* PURPOSE =
    "Simulates the broadcast middleware on the bus: fills the list of the application,\n"
    "calls it and prints its events. Either of the two may start first.\n";

constexpr const char* EXIT_CODES =
    "Exit status:\n"
    "  0  success; an endless command was ended by SIGINT or SIGTERM\n"
    "  1  failure: a call failed, an expectation did not hold, a comparison found a\n"
    "     difference, the command was interrupted, or the output was closed\n"
    "  2  wrong usage, or an input file that cannot be used\n"
    "  3  the bus cannot be reached, closed the connection, or denies this user the\n"
    "     middleware's names\n"
    "  4  no application appeared in time\n";

constexpr size_t WIDEST_LEFT = 24;

struct Row {
    std::string left;
    std::string right;
};

// Formats two columns. If the left part is too wide, the right part starts on the next line.
std::string Columns(const std::vector<Row>& rows) {
    size_t width = 0;
    for (const Row& row : rows) {
        width = std::max(width, std::min(row.left.size(), WIDEST_LEFT));
    }
    std::string text;
    for (const Row& row : rows) {
        const bool fits = row.left.size() <= width;
        text += "  " + row.left;
        text += fits ? std::string(width - row.left.size() + 2, ' ')
                     : "\n" + std::string(width + 4, ' ');
        text += row.right + '\n';
    }
    return text;
}

Row OptionRow(const Option& option) {
    const std::string letter =
        option.letter == '\0' ? "    " : std::string("-") + option.letter + ", ";
    return {letter + "--" + option.name + (option.value.empty() ? "" : "=" + option.value),
            option.help};
}

std::string OptionColumns(const std::vector<Option>& options) {
    std::vector<Row> rows;
    std::transform(options.begin(), options.end(), std::back_inserter(rows), OptionRow);
    return Columns(rows);
}

std::string LowerCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return text;
}

/// Returns how many letters must be inserted, removed or replaced to turn one word into the other.
size_t EditDistance(const std::string& from, const std::string& to) {
    std::vector<size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), 0);
    for (size_t i = 1; i <= from.size(); ++i) {
        size_t diagonal = std::exchange(row[0], i);
        for (size_t j = 1; j <= to.size(); ++j) {
            const size_t replaced = diagonal + (from[i - 1] == to[j - 1] ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({replaced, row[j] + 1, row[j - 1] + 1});
        }
    }
    return row.back();
}

}  // namespace

const std::vector<Option>& GeneralOptions() {
    static const std::vector<Option> OPTIONS{
        {"help", 'h', "", "Print this text"},
        {"version", '\0', "", "Print the version"},
    };
    return OPTIONS;
}

std::string ProgramHelp(const std::vector<Subcommand>& subcommands) {
    std::vector<Row> rows;
    rows.reserve(subcommands.size());
    for (const Subcommand& subcommand : subcommands) {
        rows.push_back({subcommand.name, subcommand.summary});
    }
    return std::string("Usage: javamw-sim COMMAND [OPTION...] [ARGUMENT...]\n\n") + PURPOSE +
           "\nCommands:\n" + Columns(rows) +
           "\n\"javamw-sim help COMMAND\" explains a command's arguments, options and output.\n" +
           "\nOptions:\n" + OptionColumns(GeneralOptions()) + "\n" + EXIT_CODES;
}

std::string SubcommandHelp(const Subcommand& subcommand) {
    std::vector<Option> options = subcommand.options;
    options.push_back(GeneralOptions().front());
    return "Usage: javamw-sim " + subcommand.name + " [OPTION...]" +
           (subcommand.words.empty() ? "" : " " + subcommand.words) + "\n\n" + subcommand.summary +
           ".\n\nOptions:\n" + OptionColumns(options) + "\n" + subcommand.details + "\n" +
           EXIT_CODES;
}

std::string Suggestion(const std::string& word, const std::vector<std::string>& known) {
    constexpr size_t MOST_EDITS = 2;
    std::string best;
    size_t fewest = MOST_EDITS + 1;
    for (const std::string& candidate : known) {
        const size_t edits = EditDistance(LowerCase(word), LowerCase(candidate));
        if (edits < fewest) {
            fewest = edits;
            best = candidate;
        }
    }
    return best.empty() ? "" : " (did you mean " + best + "?)";
}

}  // namespace applist::sim
