// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "broadcast/PacketReader.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace applist::sim {
namespace {

constexpr size_t TIMED_STRIDE = 192;
constexpr size_t TIME_STAMP_SIZE = 4;
// ISO/IEC 13818-1 packets have 188 bytes. Recorders prepend a time stamp of 4 bytes, and DVB
// transmission appends 16 bytes of Reed-Solomon parity.
constexpr std::array STRIDES{PACKET_SIZE, TIMED_STRIDE, size_t{204}};
// Five packets of any format. More would delay the first table of a slow stream.
constexpr size_t SAMPLE_SIZE = 5 * STRIDES.back();

// Returns the share of packets that have a sync byte, for the best offset.
double Regularity(ByteSpan sample, size_t stride) {
    std::vector<size_t> found(stride, 0);
    for (size_t position = 0; position < sample.size(); ++position) {
        found[position % stride] += sample[position] == SYNC_BYTE ? 1 : 0;
    }
    // The offset is unknown because a recording may begin inside a packet.
    const size_t best = *std::ranges::max_element(found);
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

PacketReader::PacketReader(Handler handler, Damage& damage)
    : m_handler(std::move(handler)), m_damage(damage) {}

size_t PacketReader::Read(ByteSpan bytes, bool last) {
    m_bytes = bytes;
    m_last = last;
    if (!m_format) {
        if (bytes.size() < SAMPLE_SIZE && !last) {
            return 0;
        }
        m_format = DetectPacketFormat(bytes);
        m_position = m_format->prefix;
    }
    while (HasPacket()) {
        const ByteSpan packet = m_bytes.subspan(m_position, PACKET_SIZE);
        m_damage.At(m_offset + m_position, PacketPid(packet));
        m_position += m_format->stride;
        if ((packet[1] & TRANSPORT_ERROR) == 0) {
            m_handler(packet);
        } else {
            // The receiver has set the transport error indicator, so no field of the packet is
            // reliable.
            m_damage.Add(&Damage::markedPackets);
        }
    }
    // The additions of the last packet may follow with the next bytes.
    const size_t used = std::min(m_position, bytes.size());
    m_position -= used;
    m_offset += used;
    return used;
}

// While synchronised, one sync byte suffices. Only a search requires several in a row.
bool PacketReader::HasPacket() {
    if (m_position >= m_bytes.size()) {
        return false;
    }
    if (!m_searching && m_bytes[m_position] != SYNC_BYTE) {
        LoseSync();
        m_searching = true;
        ++m_position;
    }
    if (m_searching && !Search()) {
        return false;
    }
    if (m_position + PACKET_SIZE <= m_bytes.size()) {
        return true;
    }
    // The recording ends inside a packet. The rest is counted once and not searched again.
    if (m_last) {
        LoseSync();
        m_position = m_bytes.size();
    }
    return false;
}

void PacketReader::LoseSync() {
    m_damage.At(m_offset + m_position);
    m_damage.Add(&Damage::lostSync);
}

bool PacketReader::Search() {
    while (m_position < m_bytes.size() && m_searching) {
        const Answer answer = IsStartOfPacket();
        if (answer == Answer::Unknown) {
            return false;
        }
        m_searching = answer == Answer::No;
        m_position += m_searching ? 1 : 0;
    }
    return !m_searching;
}

PacketReader::Answer PacketReader::IsStartOfPacket() {
    if (m_bytes[m_position] != SYNC_BYTE) {
        return Answer::No;
    }
    // The answer must not depend on how many bytes happen to be there.
    if (!m_last && m_position + (PACKETS_TO_TRUST - 1) * STRIDES.back() >= m_bytes.size()) {
        return Answer::Unknown;
    }
    if (IsFirstOfRow(m_format->stride)) {
        return Answer::Yes;
    }
    // The first kilobyte may have been damaged, or another stream follows.
    for (const size_t stride : STRIDES) {
        if (m_position + (PACKETS_TO_TRUST - 1) * stride < m_bytes.size() && IsFirstOfRow(stride)) {
            m_format->stride = stride;
            return Answer::Yes;
        }
    }
    return Answer::No;
}

bool PacketReader::IsFirstOfRow(size_t stride) const {
    for (size_t packet = 1; packet < PACKETS_TO_TRUST; ++packet) {
        const size_t start = m_position + packet * stride;
        // The additions around the last packet may be truncated, but not the packet itself.
        if (start >= m_bytes.size()) {
            return start - stride + PACKET_SIZE <= m_bytes.size();
        }
        if (m_bytes[start] != SYNC_BYTE) {
            return false;
        }
    }
    return true;
}

namespace {

constexpr uint8_t HAS_ADAPTATION = 0x20;
constexpr uint8_t HAS_REFERENCE = 0x10;
constexpr uint8_t SIZE_WITH_REFERENCE = 7;
// ISO/IEC 13818-1: the base of a program clock reference has 33 bits and runs at 90 kHz.
constexpr uint64_t TICKS_PER_SECOND = 90000;
constexpr uint64_t TICKS_MASK = (uint64_t{1} << 33U) - 1;
// References are at most 100 ms apart. A much larger difference is a jump of the clock.
constexpr uint64_t LONGEST_STEP = 10 * TICKS_PER_SECOND;

std::optional<uint64_t> Reference(ByteSpan packet) {
    ByteReader reader(packet.subspan(3));
    if ((reader.U8() & HAS_ADAPTATION) == 0 || reader.U8() < SIZE_WITH_REFERENCE ||
        (reader.U8() & HAS_REFERENCE) == 0) {
        return std::nullopt;
    }
    const uint64_t high = reader.U32();
    return high << 1U | reader.U8() >> 7U;
}

}  // namespace

void StreamClock::Push(ByteSpan packet) {
    const uint16_t pid = PacketPid(packet);
    // Services may have unrelated clocks, so only the first PID with a reference is used.
    if (m_pid && *m_pid != pid) {
        return;
    }
    const auto reference = Reference(packet);
    if (!reference) {
        return;
    }
    // The mask makes the difference correct when the counter wraps around.
    const uint64_t step = (*reference - m_last) & TICKS_MASK;
    if (m_pid && step <= LONGEST_STEP) {
        m_ticks += step;
    }
    m_pid = pid;
    m_last = *reference;
}

std::optional<double> StreamClock::seconds() const {
    if (!m_pid) {
        return std::nullopt;
    }
    return static_cast<double>(m_ticks) / static_cast<double>(TICKS_PER_SECOND);
}

}  // namespace applist::sim
