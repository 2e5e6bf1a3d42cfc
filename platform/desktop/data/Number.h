// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <charconv>
#include <cstdint>
#include <optional>
#include <string_view>

namespace applist::desktop {

/// A decimal number of 32 bits, digits behind an optional '-' and nothing else.
inline std::optional<int32_t> ParseNumber(std::string_view text) {
    int32_t number = 0;
    const char* end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && rest == end ? std::optional(number) : std::nullopt;
}

}  // namespace applist::desktop
