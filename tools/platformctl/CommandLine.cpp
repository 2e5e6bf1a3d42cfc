// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "CommandLine.h"

#include <cstdio>

namespace applist::desktop {
namespace {

void TakeOption(CommandLine& line, const std::string& option) {
    if (option == "--help" || option == "-h") {
        line.help = true;
    } else if (option == "--version") {
        line.version = true;
    } else if (option == "--json") {
        line.json = true;
    } else if (line.unknownOption.empty()) {
        line.unknownOption = option;
    }
}

bool LooksLikeOption(const std::string& word) {
    // Words with a single '-' may be negative numbers.
    return word == "-h" || word.starts_with("--");
}

}  // namespace

CommandLine ParseCommandLine(const std::vector<std::string>& arguments) {
    CommandLine line;
    auto next = arguments.begin();
    for (; next != arguments.end() && *next != "--"; ++next) {
        if (LooksLikeOption(*next)) {
            TakeOption(line, *next);
        } else {
            line.words.push_back(*next);
        }
    }
    if (next != arguments.end()) {
        line.words.insert(line.words.end(), next + 1, arguments.end());
    }
    return line;
}

Exit Complain(const std::string& problem, Exit status) {
    static_cast<void>(std::fprintf(stderr, "platformctl: %s\n", problem.c_str()));
    return status;
}

}  // namespace applist::desktop
