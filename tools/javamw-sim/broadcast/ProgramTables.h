// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "broadcast/ByteReader.h"

namespace applist::sim {

/// What every section in the long form begins with, and the bytes between that and the CRC.
struct TableSection {
    uint8_t tableId = 0;
    uint16_t extension = 0;
    uint8_t version = 0;
    bool current = false;  ///< False: announced, not yet valid.
    uint8_t number = 0;
    ByteSpan body;  ///< Into the section's bytes.
};

/// Nothing for a section in the short form or one whose length does not fit its bytes.
std::optional<TableSection> ParseTableSection(ByteSpan section);

/// One service of the Program Association Table and where its Program Map Table is.
struct ProgramReference {
    uint16_t number = 0;
    uint16_t pid = 0;
};

/// The services of one Program Association section; the network entry is none.
std::optional<std::vector<ProgramReference>> ParseProgramAssociation(ByteSpan section);

/// Where one service carries its Application Information Tables.
struct ProgramMap {
    uint16_t number = 0;
    std::vector<uint16_t> applicationPids;
};

/// Nothing when the section is no Program Map Table or its loops do not fit.
std::optional<ProgramMap> ParseProgramMap(ByteSpan section);

}  // namespace applist::sim
