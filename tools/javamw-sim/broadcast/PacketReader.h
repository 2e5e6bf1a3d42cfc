// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "broadcast/ByteReader.h"

namespace applist::sim {

constexpr size_t PACKET_SIZE = 188;

/// The packet identifier of a whole transport packet.
inline uint16_t PacketPid(ByteSpan packet) {
    return static_cast<uint16_t>((packet[1] & 0x1FU) << 8U | packet[2]);
}

/// Walks over the 188-byte packets of a transport stream and finds its way back after damage.
class PacketReader {
public:
    /// stream is not owned and must outlive the reader.
    explicit PacketReader(ByteSpan stream) : m_stream(stream) {}

    /// The next packet that the receiver did not mark as broken; nothing at the end.
    std::optional<ByteSpan> Next();

    /// Packets marked as broken so far, and places where the packet rhythm was lost.
    size_t damaged() const { return m_damaged; }

private:
    bool IsStartOfPacket(size_t position) const;
    bool FindSync();

    ByteSpan m_stream;
    size_t m_position = 0;
    size_t m_damaged = 0;
};

}  // namespace applist::sim
