// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// A program of the build: copies the manual page INPUT to OUTPUT. A line "@OPTIONS
// COMMAND@" becomes the list of the command's own options, and "@OPTIONS@" that of the
// options of the program.
#include <algorithm>
#include <fstream>
#include <iostream>
#include <map>

#include "shared/CommandLine.h"

namespace applist::tools {
namespace {

constexpr const char* PLACE = "@OPTIONS";

/// Returns the options as a list in mdoc, the language of the manual pages.
std::string ListOf(const std::vector<Option>& options) {
    std::string text = ".Bl -tag -width Ds\n";
    for (const Option& option : options) {
        text += ".It Fl ";
        text += option.letter == '\0' ? "" : std::string{option.letter} + " , ";
        text += '-' + option.name + (option.value.empty() ? "" : " Ns = Ns Ar " + option.value) +
                '\n' + option.help + ".\n";
    }
    return text + ".El\n";
}

/// Returns each list of options by the line of the template that it replaces: "@OPTIONS serve@".
std::map<std::string, std::string> Lists(const Program& program) {
    std::vector<Option> general = program.options;
    general.insert(general.end(), {VersionOption(), HelpOption()});
    std::map<std::string, std::string> lists{{std::string(PLACE) + '@', ListOf(general)}};
    for (const Command& command : program.commands) {
        if (!command.options.empty()) {
            lists[std::string(PLACE) + ' ' + command.name + '@'] = ListOf(command.options);
        }
    }
    return lists;
}

int Fail(const std::string& problem, const std::string& place) {
    std::cerr << "manual page: " << problem << ' ' << place << '\n';
    return 1;
}

/// Copies the template with the lists inserted. Each list must have exactly one place.
int Copy(const Program& program, std::istream& input, std::ostream& output) {
    std::map<std::string, std::string> lists = Lists(program);
    for (std::string line; std::getline(input, line);) {
        const auto list = lists.find(line);
        if (list == lists.end() && line.starts_with(PLACE)) {
            return Fail("unknown or repeated", line);
        }
        if (list == lists.end()) {
            output << line << '\n';
        } else {
            output << list->second;
            lists.erase(list);
        }
    }
    if (!lists.empty()) {
        return Fail("no line", lists.begin()->first);
    }
    return output.flush() ? 0 : Fail("cannot be written", "");
}

}  // namespace
}  // namespace applist::tools

int main(int argc, char** argv) {
    if (argc != 3) {
        return 2;
    }
    std::ifstream input(argv[1]);
    std::ofstream output(argv[2]);
    return applist::tools::Copy(applist::tools::TheProgram(), input, output);
}
