// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>

namespace applist::sim {

/// Counts the skipped parts of an input by the kind of error.
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

    size_t packets() const {
        return lostSync + markedPackets + malformedPackets + scrambledPackets + missingPackets;
    }
    size_t sections() const { return wrongChecksums + malformedSections; }
};

/// Returns "3 in packets (2 lost sync, 1 gaps), 1 in sections (1 wrong CRC)", or an empty string if
/// nothing was skipped.
std::string Describe(const Damage& damage);

}  // namespace applist::sim
