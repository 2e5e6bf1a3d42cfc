// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <charconv>
#include <cstdint>
#include <optional>
#include <string_view>

namespace applist::desktop {

/// Parses a signed 32-bit decimal number: an optional '-', then digits. Returns nothing for any
/// other text.
inline std::optional<int32_t> ParseNumber(std::string_view text) {
    int32_t number = 0;
    const char* end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && rest == end ? std::optional(number) : std::nullopt;
}

}  // namespace applist::desktop
