// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include <nlohmann/json_fwd.hpp>

namespace applist::tools {

/// Returns text on one line: control bytes as "\x0a", a backslash doubled.
std::string OneLine(const std::string& text);

/// Returns text with each from replaced by to.
std::string Replaced(std::string text, std::string_view from, std::string_view to);

/// Returns the text of each element, separated.
template <typename Elements, typename Text = std::identity>
std::string Joined(const Elements& elements, const std::string& separator, Text text = {}) {
    std::string joined;
    for (const auto& element : elements) {
        joined += (joined.empty() ? "" : separator) + std::string(std::invoke(text, element));
    }
    return joined;
}

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
