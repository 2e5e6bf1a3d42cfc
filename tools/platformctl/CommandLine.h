// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

namespace applist::desktop {

/// The exit statuses of the program.
enum Exit { DONE = 0, FAILED = 1, WRONG_USAGE = 2 };

/// The parsed command line. The words are not validated yet.
struct CommandLine {
    bool help = false;
    bool version = false;
    bool json = false;
    /// The command and its arguments.
    std::vector<std::string> words;
    /// The first unknown option; empty if all are known.
    std::string unknownOption;
};

/// Parses the arguments. Options may appear anywhere before a "--". A negative number is not an
/// option.
CommandLine ParseCommandLine(const std::vector<std::string>& arguments);

/// Prints "platformctl: PROBLEM" on standard error; returns status.
Exit Complain(const std::string& problem, Exit status);

}  // namespace applist::desktop
