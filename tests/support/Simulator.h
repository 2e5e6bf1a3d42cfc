// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "support/ChildProcess.h"

namespace applist::test {

/// The exit codes of javamw-sim as its manual page lists them, not taken from the program.
constexpr int SUCCESS = 0;
constexpr int FAILED = 1;
constexpr int WRONG_USAGE = 2;
constexpr int NO_BUS = 3;
constexpr int NO_APPLICATION = 4;

/// The option that names a bus that does not exist. A valid command line then ends with NO_BUS.
inline const std::string NO_BUS_THERE = "--address=unix:path=/nonexistent/bus";

/// The result of a program that has ended.
struct Outcome {
    int status = -1;
    std::string output;
    std::string errors;
};

/// Runs javamw-sim to its end, in the C locale unless changes say otherwise.
inline Outcome RunSimulator(std::vector<std::string> arguments,
                            ChildProcess::Environment changes = {}) {
    arguments.insert(arguments.begin(), BuiltProgram("javamw-sim"));
    changes.emplace("LC_ALL", "C");
    changes.emplace("LANGUAGE", "");
    ChildProcess program(arguments, changes);
    const int status = program.WaitForExit().value_or(-1);
    return {status, program.Output(), program.Errors()};
}

}  // namespace applist::test
