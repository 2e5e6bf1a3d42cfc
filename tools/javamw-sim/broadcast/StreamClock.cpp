// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "broadcast/StreamClock.h"

#include "broadcast/PacketReader.h"

namespace applist::sim {
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
