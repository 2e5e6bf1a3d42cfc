// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

/// Conversion of 32-bit numbers to and from the wire format: four bytes, least significant byte
/// first, on every machine. Any thread.

namespace applist {

/// Size of a number on the wire, in bytes.
constexpr std::size_t WIRE_NUMBER_SIZE = 4;

/// Returns the wire form of value.
constexpr std::array<char, WIRE_NUMBER_SIZE> ToLittleEndian(std::uint32_t value) {
    std::array<char, WIRE_NUMBER_SIZE> bytes{};
    for (char& byte : bytes) {
        byte = static_cast<char>(value & 0xFFU);
        value >>= 8U;
    }
    return bytes;
}

/// Returns the number that bytes encode.
constexpr std::uint32_t FromLittleEndian(std::span<const char, WIRE_NUMBER_SIZE> bytes) {
    std::uint32_t value = 0;
    for (std::size_t i = bytes.size(); i > 0; --i) {
        value = (value << 8U) | static_cast<unsigned char>(bytes[i - 1]);
    }
    return value;
}

}  // namespace applist
