// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>

#include "broadcast/ByteReader.h"
#include "broadcast/Damage.h"

namespace applist::sim {

/// A transport packet without what some formats put around it.
constexpr size_t PACKET_SIZE = 188;
constexpr uint8_t SYNC_BYTE = 0x47;

/// How the packets of a file follow each other.
struct PacketFormat {
    size_t stride = PACKET_SIZE;  ///< From one sync byte to the next.
    size_t prefix = 0;            ///< Bytes before the first sync byte that belong to its packet.

    bool operator==(const PacketFormat&) const = default;
};

/// Finds out whether packets have 188 bytes (ISO/IEC 13818-1), 192 (a time stamp of four bytes
/// before each, as discs and recorders write them) or 204 (16 bytes of error correction behind
/// each, EN 300 744; ISDB-T recorders fill them otherwise). Damage and a start in the middle of a
/// packet do no harm. 188 where nothing tells.
PacketFormat DetectPacketFormat(ByteSpan stream);

/// The packet identifier of a whole transport packet.
inline uint16_t PacketPid(ByteSpan packet) {
    return static_cast<uint16_t>((packet[1] & 0x1FU) << 8U | packet[2]);
}

/// Walks over the packets of a transport stream, whatever their format, and finds its way back
/// after damage.
class PacketReader {
public:
    /// stream and damage are not owned and must outlive the reader, which adds to damage.
    PacketReader(ByteSpan stream, Damage& damage);

    /// The 188 bytes of the next packet that the receiver did not mark as broken; nothing at the
    /// end.
    std::optional<ByteSpan> Next();

    const PacketFormat& format() const { return m_format; }

private:
    bool IsStartOfPacket(size_t position) const;
    bool FindSync();

    ByteSpan m_stream;
    Damage& m_damage;
    PacketFormat m_format;
    size_t m_position;
};

}  // namespace applist::sim
