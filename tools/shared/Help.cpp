// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "shared/Help.h"

#include <algorithm>
#include <cctype>
#include <numeric>
#include <utility>

namespace applist::tools {
namespace {

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

std::string Joined(const std::string& name, const std::string& words) {
    return words.empty() ? name : name + ' ' + words;
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

std::string ProgramHelp(const Program& program) {
    std::vector<Row> rows;
    rows.reserve(program.commands.size());
    for (const Command& command : program.commands) {
        rows.push_back({Joined(command.name, command.words), command.summary});
    }
    std::vector<Option> options = program.options;
    options.insert(options.end(), {HelpOption(), VersionOption()});
    return "Usage: " + program.name + " COMMAND [OPTION...] [ARGUMENT...]\n\n" + program.purpose +
           "\nCommands:\n" + Columns(rows) + "\n\"" + program.name +
           " help COMMAND\" explains a command's arguments, options and output.\n\nOptions:\n" +
           OptionColumns(options) + "\n" + program.exitCodes;
}

std::string CommandHelp(const Program& program, const Command& command) {
    std::vector<Option> options = command.options;
    options.insert(options.end(), program.options.begin(), program.options.end());
    options.push_back(HelpOption());
    if (command.name.empty()) {
        options.push_back(VersionOption());
    }
    return "Usage: " + Joined(CallOf(program, command) + " [OPTION...]", command.words) + "\n\n" +
           command.summary + ".\n\nOptions:\n" + OptionColumns(options) + "\n" + command.details +
           (command.details.empty() ? "" : "\n") + program.exitCodes;
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

}  // namespace applist::tools
