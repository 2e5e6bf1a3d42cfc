// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "broadcast/PacketReader.h"

#include <algorithm>
#include <array>
#include <vector>

namespace applist::sim {
namespace {

constexpr size_t TIMED_STRIDE = 192;
constexpr size_t TIME_STAMP_SIZE = 4;
// ISO/IEC 13818-1 packets have 188 bytes. Recorders prepend a time stamp of 4 bytes, and DVB
// transmission appends 16 bytes of Reed-Solomon parity.
constexpr std::array STRIDES{PACKET_SIZE, TIMED_STRIDE, size_t{204}};
// A few hundred packets suffice to detect the format.
constexpr size_t SAMPLE_SIZE = 65536;

// Returns the share of packets that have a sync byte, for the best offset.
double Regularity(ByteSpan sample, size_t stride) {
    std::vector<size_t> found(stride, 0);
    for (size_t position = 0; position < sample.size(); ++position) {
        found[position % stride] += sample[position] == SYNC_BYTE ? 1 : 0;
    }
    // The offset is unknown because a recording may begin inside a packet.
    const size_t best = *std::max_element(found.begin(), found.end());
    return std::min(1.0, static_cast<double>(best * stride) / static_cast<double>(sample.size()));
}

}  // namespace

PacketFormat DetectPacketFormat(ByteSpan stream) {
    const ByteSpan sample = stream.first(std::min(stream.size(), SAMPLE_SIZE));
    // With fewer than two packets every stride fits.
    if (sample.size() < 2 * STRIDES.back()) {
        return {};
    }
    PacketFormat format;
    double best = 0;
    for (const size_t stride : STRIDES) {
        const double regularity = Regularity(sample, stride);
        // The shorter stride is kept if two are equally regular.
        if (regularity > best) {
            best = regularity;
            format.stride = stride;
        }
    }
    if (format.stride == TIMED_STRIDE && stream[TIME_STAMP_SIZE] == SYNC_BYTE) {
        format.prefix = TIME_STAMP_SIZE;
    }
    return format;
}

namespace {

constexpr uint8_t TRANSPORT_ERROR = 0x80;
// The value of the sync byte is also frequent in data. Three of them at the distance of a packet
// are not a coincidence.
constexpr size_t PACKETS_TO_TRUST = 3;

}  // namespace

PacketReader::PacketReader(ByteSpan stream, Damage& damage)
    : m_stream(stream),
      m_damage(damage),
      m_format(DetectPacketFormat(stream)),
      m_position(m_format.prefix) {}

std::optional<ByteSpan> PacketReader::Next() {
    while (FindSync()) {
        const ByteSpan packet = m_stream.subspan(m_position, PACKET_SIZE);
        m_position += m_format.stride;
        if ((packet[1] & TRANSPORT_ERROR) == 0) {
            return packet;
        }
        // The receiver has set the transport error indicator, so no field of the packet is
        // reliable.
        ++m_damage.markedPackets;
    }
    return std::nullopt;
}

// The additions around the last packet may be truncated, but not the packet itself.
bool PacketReader::IsStartOfPacket(size_t position) const {
    for (size_t packet = 0; packet < PACKETS_TO_TRUST; ++packet) {
        const size_t start = position + packet * m_format.stride;
        if (start >= m_stream.size()) {
            return packet > 0 && start - m_format.stride + PACKET_SIZE <= m_stream.size();
        }
        if (m_stream[start] != SYNC_BYTE) {
            return false;
        }
    }
    return true;
}

// While synchronised, one sync byte suffices. Only a search requires several in a row.
bool PacketReader::FindSync() {
    if (m_position >= m_stream.size()) {
        return false;
    }
    if (m_stream[m_position] != SYNC_BYTE) {
        ++m_damage.lostSync;
        do {
            ++m_position;
        } while (m_position < m_stream.size() && !IsStartOfPacket(m_position));
    }
    if (m_position + PACKET_SIZE <= m_stream.size()) {
        return true;
    }
    // The recording ends inside a packet. The rest is counted once and not searched again.
    if (m_position < m_stream.size()) {
        ++m_damage.lostSync;
        m_position = m_stream.size();
    }
    return false;
}

}  // namespace applist::sim
