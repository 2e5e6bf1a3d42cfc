// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>
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

/// Detects the packet size from the first kilobyte of a stream: 188 bytes (ISO/IEC 13818-1), 192 (a
/// time stamp of four bytes before each packet, as discs and recorders write them) or 204 (16 bytes
/// of error correction after each packet, EN 300 744; ISDB-T recorders use them for other data).
/// Damage and a start in the middle of a packet are tolerated. Returns 188 if the size cannot be
/// detected.
PacketFormat DetectPacketFormat(ByteSpan stream);

/// Returns the packet identifier of a whole transport packet.
inline uint16_t PacketPid(ByteSpan packet) {
    return static_cast<uint16_t>((packet[1] & 0x1FU) << 8U | packet[2]);
}

/// Divides a transport stream in any format into packets, and resynchronises after damage.
class PacketReader {
public:
    /// Called with the 188 bytes of each packet that is not marked as broken. They are valid only
    /// during the call.
    using Handler = std::function<void(ByteSpan packet)>;

    /// damage must outlive the reader, which adds to it and sets its place.
    PacketReader(Handler handler, Damage& damage);

    /// As BroadcastParser::Parse().
    size_t Read(ByteSpan bytes, bool last);

    /// Absent until enough bytes were read.
    const std::optional<PacketFormat>& format() const { return m_format; }

private:
    enum class Answer { No, Yes, Unknown };

    bool HasPacket();
    bool Search();
    Answer IsStartOfPacket();
    bool IsFirstOfRow(size_t stride) const;
    void LoseSync();

    Handler m_handler;
    Damage& m_damage;
    std::optional<PacketFormat> m_format;
    bool m_searching = false;
    uint64_t m_offset = 0;  ///< Of m_bytes in the stream.
    size_t m_position = 0;  ///< Of the next packet in m_bytes, or after them.
    ByteSpan m_bytes;       ///< Valid during Read().
    bool m_last = false;
};

/// Measures the duration of a stream by the programme clock references (ISO/IEC 13818-1, 2.4.2.2)
/// of the first PID that has any.
class StreamClock {
public:
    /// packet must be a whole transport packet of any PID.
    void Push(ByteSpan packet);

    /// Returns the seconds since the first reference, or nothing before it. A jump of the clock,
    /// for example where recordings were joined, counts as no time.
    std::optional<double> seconds() const;

private:
    std::optional<uint16_t> m_pid;
    uint64_t m_last = 0;
    uint64_t m_ticks = 0;
};

}  // namespace applist::sim
