// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "protocol/Hex.h"

#include <charconv>

namespace applist::sim {

std::string ToHex(std::string_view bytes) {
    constexpr const char* DIGITS = "0123456789abcdef";
    std::string text;
    text.reserve(bytes.size() * 2);
    for (const char byte : bytes) {
        text += DIGITS[static_cast<uint8_t>(byte) >> 4U];
        text += DIGITS[static_cast<uint8_t>(byte) & 0xFU];
    }
    return text;
}

std::optional<Bytes> FromHex(std::string_view text) {
    if (text.size() % 2 != 0) {
        return std::nullopt;
    }
    Bytes bytes;
    bytes.reserve(text.size() / 2);
    for (size_t i = 0; i < text.size(); i += 2) {
        uint8_t value = 0;
        const char* end = text.data() + i + 2;
        const auto parsed = std::from_chars(text.data() + i, end, value, 16);
        if (parsed.ec != std::errc() || parsed.ptr != end) {
            return std::nullopt;
        }
        bytes.push_back(static_cast<char>(value));
    }
    return bytes;
}

}  // namespace applist::sim
