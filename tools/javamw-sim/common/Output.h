// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace applist::sim {

/// What the program's end tells its caller; --help lists them.
enum class ExitCode : int {
    Success = 0,
    CallFailed = 1,     ///< Or the application ended first, or the output could not be written.
    WrongUsage = 2,     ///< Or an input file that cannot be used.
    NoBus = 3,          ///< Not reachable, or lost later.
    NoApplication = 4,  ///< None was there in time.
};

/// Follows the error when the policy of the bus denies this program its names.
constexpr const char* DENIED_HINT =
    "run as the user whom the policy of the bus allows to be the middleware, or choose another bus "
    "with --address";

/// text on one line whatever it holds: control bytes as "\x0a", a backslash twice.
std::string OneLine(const std::string& text);

namespace colour {
// What a text means, as terminals paint it.
constexpr const char* GOOD = "\033[32m";
constexpr const char* BAD = "\033[1;31m";
constexpr const char* QUIET = "\033[2m";
constexpr const char* STRONG = "\033[1m";
}  // namespace colour

/// True iff standard output is a terminal that may be painted: NO_COLOR is not set, and TERM is
/// not "dumb".
bool OutputTakesColours();

/// text in colour.
std::string Painted(const std::string& text, const char* colour);

/// Writes line and a newline to standard output at once, for whoever reads along. False when
/// nobody can.
[[nodiscard]] bool WriteLine(const std::string& line);

/// Writes message to standard error, each of its lines behind "javamw-sim: ".
void Complain(const std::string& message);

}  // namespace applist::sim
