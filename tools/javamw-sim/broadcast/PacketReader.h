// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>

#include "broadcast/ByteReader.h"
#include "broadcast/Damage.h"

namespace applist::sim {

/// The size of a transport packet without additions of the file format.
constexpr size_t PACKET_SIZE = 188;
constexpr uint8_t SYNC_BYTE = 0x47;

/// The layout of packets in a file.
struct PacketFormat {
    size_t stride = PACKET_SIZE;  ///< From one sync byte to the next.
    size_t prefix = 0;            ///< Bytes before the first sync byte that belong to its packet.

    bool operator==(const PacketFormat&) const = default;
};

/// Detects the packet size: 188 bytes (ISO/IEC 13818-1), 192 (a time stamp of four bytes before
/// each packet, as discs and recorders write them) or 204 (16 bytes of error correction after each
/// packet, EN 300 744; ISDB-T recorders use them for other data). Damage and a start in the middle
/// of a packet are tolerated. Returns 188 if the size cannot be detected.
PacketFormat DetectPacketFormat(ByteSpan stream);

/// Returns the packet identifier of a whole transport packet.
inline uint16_t PacketPid(ByteSpan packet) {
    return static_cast<uint16_t>((packet[1] & 0x1FU) << 8U | packet[2]);
}

/// Iterates over the packets of a transport stream in any format, and resynchronises after damage.
class PacketReader {
public:
    /// stream and damage must outlive the reader. The reader adds to damage.
    PacketReader(ByteSpan stream, Damage& damage);

    /// Returns the 188 bytes of the next packet that is not marked as broken, or nothing at the
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
