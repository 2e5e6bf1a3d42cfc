// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace applist::sim {

/// Counts the skipped parts of an input by the kind of error, and keeps the places of the first.
struct Damage {
    size_t lostSync = 0;           ///< Places where a packet should begin but does not.
    size_t markedPackets = 0;      ///< Marked as broken by the receiver.
    size_t malformedPackets = 0;   ///< Lengths that point outside the packet.
    size_t scrambledPackets = 0;   ///< Packets of tables that must not be scrambled.
    size_t missingPackets = 0;     ///< Gaps in the packet counter of a PID.
    size_t wrongChecksums = 0;     ///< Sections with a wrong CRC.
    size_t malformedSections = 0;  ///< Sections with invalid lengths or contents.
    size_t incompleteTables = 0;   ///< Tables that were used although sections are missing.
    size_t surplusChanges = 0;     ///< Changes beyond the limit.
    /// Kind and place of the first ten: "wrong CRC at byte 5640 on PID 0x0300".
    std::vector<std::string> places{};

    /// Sets the place to which Add() refers: an offset in the input, and the PID of its packet.
    void At(uint64_t byte, std::optional<uint16_t> pid = std::nullopt) {
        m_byte = byte;
        m_pid = pid;
    }
    /// Counts one more in a counter of packets or sections.
    void Add(size_t Damage::*counter);

    size_t packets() const {
        return lostSync + markedPackets + malformedPackets + scrambledPackets + missingPackets;
    }
    size_t sections() const { return wrongChecksums + malformedSections; }

private:
    uint64_t m_byte = 0;
    std::optional<uint16_t> m_pid{};
};

/// Returns "3 in packets (2 lost sync, 1 gaps), 1 in sections (1 wrong CRC)", or an empty string if
/// nothing was skipped.
std::string Describe(const Damage& damage);

}  // namespace applist::sim
