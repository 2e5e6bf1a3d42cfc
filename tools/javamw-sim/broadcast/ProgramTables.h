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

/// The header of a section in the long form, and the bytes between it and the CRC.
struct TableSection {
    uint8_t tableId = 0;
    uint16_t extension = 0;
    uint8_t version = 0;
    bool current = false;  ///< False if the table is announced but not yet valid.
    uint8_t number = 0;
    uint8_t lastNumber = 0;  ///< Number of the last section of the table.
    ByteSpan body;           ///< Points into the bytes of the section.
};

/// Returns nothing for a section in the short form or with an invalid length.
std::optional<TableSection> ParseTableSection(ByteSpan section);

/// One service of the Program Association Table and where its Program Map Table is.
struct ProgramReference {
    uint16_t number = 0;
    uint16_t pid = 0;
};

/// Returns the services of one Program Association section, without the network entry.
std::optional<std::vector<ProgramReference>> ParseProgramAssociation(ByteSpan section);

/// PIDs of the Application Information Tables of one service.
struct ProgramMap {
    uint16_t number = 0;
    std::vector<uint16_t> applicationPids;
    bool isdb = false;  ///< True if it is described as an ISDB data service.
};

/// Returns nothing if the section is a different table or if its loops do not fit.
std::optional<ProgramMap> ParseProgramMap(ByteSpan section);

/// The name of a service in the coding of the broadcast.
struct ServiceName {
    uint16_t service = 0;
    ByteSpan text;  ///< Points into the bytes of the section.
};

/// Returns the services of this transport stream in one section of the Service Description Table
/// (EN 300 468, ARIB STD-B10), or nothing if it is a different table or if its loops do not fit.
std::optional<std::vector<ServiceName>> ParseServiceDescription(ByteSpan section);

}  // namespace applist::sim
