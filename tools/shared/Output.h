// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <nlohmann/json_fwd.hpp>

namespace applist::tools {

/// Returns text on one line: control bytes as "\x0a", a backslash doubled.
std::string OneLine(const std::string& text);

/// Returns the number of terminal columns of text, which is UTF-8.
size_t ColumnsOf(std::string_view text);

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

/// Writes text to standard output and flushes it. Returns false if standard output cannot be
/// written, after a message unless it is a closed pipe.
[[nodiscard]] bool Write(const std::string& text);

/// Writes line and a newline.
[[nodiscard]] bool WriteLine(const std::string& line);

/// A JSON value whose members keep their order.
using Json = nlohmann::ordered_json;

/// Returns value on one line. Invalid UTF-8 is replaced with replacement characters.
std::string JsonLine(const Json& value);

/// Returns value with indentation and a final line end; invalid UTF-8 is replaced.
std::string JsonText(const Json& value);

}  // namespace applist::tools
