// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace applist::sim {

/// Exit status of the program; --help lists them.
enum class ExitCode : int {
    Success = 0,
    CallFailed = 1,     ///< Or the application ended first, or writing failed.
    WrongUsage = 2,     ///< Or an invalid input file.
    NoBus = 3,          ///< Not reachable, denied, or lost later.
    NoApplication = 4,  ///< No application appeared in time.
};

/// Printed after the error when the policy of the bus denies the names of the middleware.
constexpr const char* DENIED_HINT =
    "run as the user whom the policy of the bus allows to be the middleware, or choose another bus "
    "with --address";

/// Returns text on one line: control bytes as "\x0a", a backslash doubled.
std::string OneLine(const std::string& text);

namespace colour {
// Terminal colours by meaning.
constexpr const char* GOOD = "\033[32m";
constexpr const char* BAD = "\033[1;31m";
constexpr const char* QUIET = "\033[2m";
constexpr const char* STRONG = "\033[1m";
}  // namespace colour

/// True iff standard output is a terminal that takes colours: NO_COLOR is not set, and TERM is not
/// "dumb".
bool OutputTakesColours();

/// Returns text in colour.
std::string Painted(const std::string& text, const char* colour);

/// Writes line and a newline to standard output and flushes it. Returns false if standard output
/// cannot be written.
[[nodiscard]] bool WriteLine(const std::string& line);

/// Writes message to standard error, with "javamw-sim: " before each line.
void Complain(const std::string& message);

}  // namespace applist::sim
