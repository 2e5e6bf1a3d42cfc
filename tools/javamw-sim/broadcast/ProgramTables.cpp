// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "broadcast/ProgramTables.h"

namespace applist::sim {
namespace {

constexpr uint8_t ASSOCIATION_TABLE = 0x00;
constexpr uint8_t MAP_TABLE = 0x02;
constexpr uint8_t PRIVATE_SECTIONS = 0x05;
constexpr uint16_t LONG_FORM = 0x8000;
constexpr uint16_t PID_MASK = 0x1FFF;
constexpr size_t CRC_SIZE = 4;

}  // namespace

std::optional<TableSection> ParseTableSection(ByteSpan section) {
    ByteReader reader(section);
    TableSection table;
    table.tableId = reader.U8();
    const uint16_t flagsAndLength = reader.U16();
    if ((flagsAndLength & LONG_FORM) == 0 || (flagsAndLength & 0x0FFFU) != reader.left()) {
        return std::nullopt;
    }
    table.extension = reader.U16();
    const uint8_t versionAndCurrent = reader.U8();
    table.version = versionAndCurrent >> 1U & 0x1FU;
    table.current = (versionAndCurrent & 1U) != 0;
    table.number = reader.U8();
    reader.U8();  // the last section's number
    if (reader.failed() || reader.left() < CRC_SIZE) {
        return std::nullopt;
    }
    table.body = reader.Take(reader.left() - CRC_SIZE);
    return table;
}

std::optional<std::vector<ProgramReference>> ParseProgramAssociation(ByteSpan section) {
    const auto table = ParseTableSection(section);
    if (!table || table->tableId != ASSOCIATION_TABLE) {
        return std::nullopt;
    }
    std::vector<ProgramReference> programs;
    ByteReader reader(table->body);
    while (reader.left() > 0) {
        const uint16_t number = reader.U16();
        const auto pid = static_cast<uint16_t>(reader.U16() & PID_MASK);
        if (number != 0 && !reader.failed()) {
            programs.push_back({number, pid});
        }
    }
    return reader.failed() ? std::nullopt : std::optional(programs);
}

// A service may name the kind of its application tables in a descriptor, but often leaves it empty
// or out; the table's own id tells it from other private sections.
std::optional<ProgramMap> ParseProgramMap(ByteSpan section) {
    const auto table = ParseTableSection(section);
    if (!table || table->tableId != MAP_TABLE) {
        return std::nullopt;
    }
    ProgramMap map;
    map.number = table->extension;
    ByteReader reader(table->body);
    reader.U16();  // the clock's PID
    reader.TakeLoop();
    while (reader.left() > 0) {
        const uint8_t streamType = reader.U8();
        const auto pid = static_cast<uint16_t>(reader.U16() & PID_MASK);
        reader.TakeLoop();
        if (streamType == PRIVATE_SECTIONS && !reader.failed()) {
            map.applicationPids.push_back(pid);
        }
    }
    return reader.failed() ? std::nullopt : std::optional(map);
}

}  // namespace applist::sim
