// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

namespace applist::test {

/// Encodes a length field independently of the code under test.
inline std::string Length(unsigned long value) {
    std::string bytes;
    for (int i = 0; i < 4; ++i) {
        bytes += static_cast<char>(static_cast<unsigned char>(value % 256));
        value /= 256;
    }
    return bytes;
}

/// The wire form of one item.
inline std::string ItemBytes(const std::string& name, const std::string& id) {
    return Length(name.size()) + name + Length(id.size()) + id;
}

inline std::vector<char> Bytes(const std::string& text) {
    return {text.begin(), text.end()};
}

inline std::string Text(const std::vector<char>& bytes) {
    return {bytes.begin(), bytes.end()};
}

}  // namespace applist::test
