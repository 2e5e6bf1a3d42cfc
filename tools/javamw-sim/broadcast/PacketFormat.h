// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

#include "broadcast/ByteReader.h"

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

}  // namespace applist::sim
