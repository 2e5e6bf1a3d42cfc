// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>

namespace applist::sim {

/// What of an input was skipped, counted by what was wrong with it.
struct Damage {
    size_t lostSync = 0;           ///< Places where no packet begins where one should.
    size_t markedPackets = 0;      ///< The receiver marked them as broken.
    size_t malformedPackets = 0;   ///< Lengths within the packet lead out of it.
    size_t scrambledPackets = 0;   ///< Of tables that are never scrambled by those who send them.
    size_t missingPackets = 0;     ///< Gaps in the count of a PID's packets.
    size_t wrongChecksums = 0;     ///< Sections whose CRC is another.
    size_t malformedSections = 0;  ///< Lengths that do not fit, or no such table after all.
    size_t incompleteTables = 0;   ///< Used as far as they came; some sections never did.
    size_t surplusChanges = 0;     ///< More changes than anyone would watch.

    size_t packets() const {
        return lostSync + markedPackets + malformedPackets + scrambledPackets + missingPackets;
    }
    size_t sections() const { return wrongChecksums + malformedSections; }
};

/// "3 in packets (2 lost sync, 1 gaps), 1 in sections (1 wrong CRC)"; empty for none.
std::string Describe(const Damage& damage);

}  // namespace applist::sim
