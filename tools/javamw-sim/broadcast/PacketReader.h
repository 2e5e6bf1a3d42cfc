// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>

#include "broadcast/ByteReader.h"
#include "broadcast/Damage.h"
#include "broadcast/PacketFormat.h"

namespace applist::sim {

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
