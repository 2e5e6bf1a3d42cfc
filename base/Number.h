// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <charconv>
#include <cstdint>
#include <optional>
#include <string_view>
#include <system_error>

namespace applist {

/// Parses a text that is one number and nothing else: an optional '-' if the type is signed, then
/// decimal digits, or what format says, which is a base for integers and a std::chars_format for
/// fractions. Returns nothing for any other text and for a number that the type cannot hold. Does
/// not depend on the locale. Any thread.
template <typename Number = std::int32_t, typename... Format>
std::optional<Number> ParseNumber(std::string_view text, Format... format) {
    Number number{};
    const char* end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number, format...);
    return error == std::errc() && rest == end ? std::optional(number) : std::nullopt;
}

}  // namespace applist
