// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "protocol/SelectionReader.h"

namespace applist::sim {

/// Follows the error when the policy of the bus denies this program its names.
constexpr const char* DENIED_HINT =
    "run as the user whom the policy of the bus allows to be the middleware, or choose another bus "
    "with --address";

/// text on one line whatever it holds: control bytes as "\x0a", a backslash twice.
std::string OneLine(const std::string& text);

/// "id<TAB>name", each on one line.
std::string ItemLine(const Item& item);

/// What was read after event: "chose ID<TAB>NAME" after event 3, which is the viewer's choice, and
/// "selection ID<TAB>NAME" after any other; or why it is unknown.
std::string DescribeSelection(Event event, const SelectedItem& selection);

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
