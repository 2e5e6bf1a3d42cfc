// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace applist::sim {

using ByteSpan = std::span<const uint8_t>;

/// Reads big-endian fields from bytes that it does not own, and never reads past their end.
///
/// A read beyond the end fails: it returns zeros, and so does every later read. A parser can
/// therefore read a whole structure and check once.
class ByteReader {
public:
    explicit ByteReader(ByteSpan bytes) : m_bytes(bytes) {}

    bool failed() const { return m_failed; }
    size_t left() const { return m_bytes.size(); }

    uint8_t U8() { return static_cast<uint8_t>(Number(1)); }
    uint16_t U16() { return static_cast<uint16_t>(Number(2)); }
    uint32_t U32() { return Number(4); }

    /// Returns the next count bytes, or none if fewer are left.
    ByteSpan Take(size_t count) {
        if (m_failed || count > m_bytes.size()) {
            m_failed = true;
            m_bytes = {};
            return {};
        }
        const ByteSpan taken = m_bytes.first(count);
        m_bytes = m_bytes.subspan(count);
        return taken;
    }

    /// Returns the bytes of a loop that is preceded by its 12-bit length.
    ByteSpan TakeLoop() { return Take(U16() & 0x0FFFU); }

private:
    uint32_t Number(size_t size) {
        uint32_t value = 0;
        for (const uint8_t byte : Take(size)) {
            value = value << 8U | byte;
        }
        return value;
    }

    ByteSpan m_bytes;
    bool m_failed = false;
};

/// Calls visit(tag, content) for each descriptor of a loop, and stops at the first that does not
/// fit.
template <typename Visit>
void ForEachDescriptor(ByteSpan loop, Visit&& visit) {
    ByteReader reader(loop);
    while (reader.left() > 0) {
        const uint8_t tag = reader.U8();
        const ByteSpan content = reader.Take(reader.U8());
        if (reader.failed()) {
            return;
        }
        visit(tag, content);
    }
}

}  // namespace applist::sim
