// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

namespace applist::desktop {

/// The exit statuses of the program.
enum Exit { DONE = 0, FAILED = 1, WRONG_USAGE = 2 };

/// What the program was asked, before anybody looked at what the words mean.
struct CommandLine {
    bool help = false;
    bool version = false;
    bool json = false;
    /// The command and its arguments.
    std::vector<std::string> words;
    /// The first option that nobody knows; empty when all are known.
    std::string unknownOption;
};

/// Options stand anywhere before a "--"; a negative number is no option.
CommandLine ParseCommandLine(const std::vector<std::string>& arguments);

/// Prints "platformctl: PROBLEM" on standard error; returns status.
Exit Complain(const std::string& problem, Exit status);

}  // namespace applist::desktop
