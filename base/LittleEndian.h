// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

/// Numbers as they cross the wire: four bytes, the least significant first, whatever the order of
/// the machine. Any thread.

namespace applist {

/// How many bytes a number takes on the wire.
constexpr std::size_t WIRE_NUMBER_SIZE = 4;

/// The bytes of value.
constexpr std::array<char, WIRE_NUMBER_SIZE> ToLittleEndian(std::uint32_t value) {
    std::array<char, WIRE_NUMBER_SIZE> bytes{};
    for (char& byte : bytes) {
        byte = static_cast<char>(value & 0xFFU);
        value >>= 8U;
    }
    return bytes;
}

/// The value of the bytes.
constexpr std::uint32_t FromLittleEndian(std::span<const char, WIRE_NUMBER_SIZE> bytes) {
    std::uint32_t value = 0;
    for (std::size_t i = bytes.size(); i > 0; --i) {
        value = (value << 8U) | static_cast<unsigned char>(bytes[i - 1]);
    }
    return value;
}

}  // namespace applist
