// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "broadcast/ByteReader.h"

namespace applist::sim {

// Table ids (ISO/IEC 13818-1, EN 300 468) and the PIDs that are fixed.
constexpr uint8_t ASSOCIATION_TABLE = 0x00;
constexpr uint8_t MAP_TABLE = 0x02;
constexpr uint8_t DESCRIPTION_TABLE = 0x42;
constexpr uint16_t ASSOCIATION_PID = 0x0000;
constexpr uint16_t DESCRIPTION_PID = 0x0011;

/// What every section in the long form begins with, and the bytes between that and the CRC.
struct TableSection {
    uint8_t tableId = 0;
    uint16_t extension = 0;
    uint8_t version = 0;
    bool current = false;  ///< False: announced, not yet valid.
    uint8_t number = 0;
    uint8_t lastNumber = 0;  ///< Of the sections that make up the table.
    ByteSpan body;           ///< Into the section's bytes.
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
    bool isdb = false;  ///< Described as ISDB describes its data services.
};

/// Nothing when the section is no Program Map Table or its loops do not fit.
std::optional<ProgramMap> ParseProgramMap(ByteSpan section);

/// What a service is called, in the broadcast's own coding.
struct ServiceName {
    uint16_t service = 0;
    ByteSpan text;  ///< Into the section's bytes.
};

/// The services of one section of the Service Description Table (EN 300 468, ARIB STD-B10) that
/// are of this transport stream. Nothing for another table or when its loops do not fit.
std::optional<std::vector<ServiceName>> ParseServiceDescription(ByteSpan section);

}  // namespace applist::sim
