// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "broadcast/ProgramTables.h"

#include "broadcast/ByteReader.h"

namespace applist::sim {
namespace {

// Stream type of ISO/IEC 13818-1, and descriptor tags of ETSI TS 102 809 and ETSI EN 300 468.
constexpr uint8_t PRIVATE_SECTIONS = 0x05;
constexpr uint8_t SIGNALLING_DESCRIPTOR = 0x6F;
constexpr uint8_t DATA_COMPONENT_DESCRIPTOR = 0xFD;  // of ARIB STD-B10
constexpr uint8_t SERVICE_DESCRIPTOR = 0x48;
constexpr uint16_t LONG_FORM = 0x8000;
constexpr uint16_t PID_MASK = 0x1FFF;
constexpr size_t CRC_SIZE = 4;

}  // namespace

std::optional<TableSection> ParseTableSection(ByteSpan section) {
    ByteReader reader(section);
    TableSection table;
    table.tableId = reader.U8();
    // Only sections in the long form have a version, section numbers and a CRC.
    const uint16_t flagsAndLength = reader.U16();
    if ((flagsAndLength & LONG_FORM) == 0 || (flagsAndLength & 0x0FFFU) != reader.left()) {
        return std::nullopt;
    }
    table.extension = reader.U16();
    const uint8_t versionAndCurrent = reader.U8();
    table.version = versionAndCurrent >> 1U & 0x1FU;
    table.current = (versionAndCurrent & 1U) != 0;
    table.number = reader.U8();
    table.lastNumber = reader.U8();
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
        // Program number 0 refers to the network information table, which is not a service.
        if (number != 0 && !reader.failed()) {
            programs.push_back({number, pid});
        }
    }
    return reader.failed() ? std::nullopt : std::optional(programs);
}

namespace {

// Reads the descriptors of one stream of a service.
struct StreamKind {
    bool signalled = false;
    bool isdb = false;
};

StreamKind KindOf(ByteSpan descriptors) {
    StreamKind kind;
    ForEachDescriptor(descriptors, [&](uint8_t tag, ByteSpan) {
        kind.signalled = kind.signalled || tag == SIGNALLING_DESCRIPTOR;
        kind.isdb = kind.isdb || tag == DATA_COMPONENT_DESCRIPTOR;
    });
    return kind;
}

ByteSpan NameIn(ByteSpan descriptors) {
    ByteSpan name;
    ForEachDescriptor(descriptors, [&](uint8_t tag, ByteSpan content) {
        if (tag == SERVICE_DESCRIPTOR) {
            ByteReader reader(content);
            reader.U8();               // the service's type
            reader.Take(reader.U8());  // who provides it
            name = reader.Take(reader.U8());
        }
    });
    return name;
}

}  // namespace

// The descriptor that names the kind of application tables is optional and often empty, so the
// table id identifies application tables among other private sections.
std::optional<ProgramMap> ParseProgramMap(ByteSpan section) {
    const auto table = ParseTableSection(section);
    if (!table || table->tableId != MAP_TABLE) {
        return std::nullopt;
    }
    ProgramMap map;
    map.number = table->extension;
    ByteReader reader(table->body);
    reader.U16();  // the clock's PID
    // The descriptors of the whole service are skipped. Those of each stream identify its kind.
    reader.TakeLoop();
    while (reader.left() > 0) {
        const uint8_t streamType = reader.U8();
        const auto pid = static_cast<uint16_t>(reader.U16() & PID_MASK);
        const StreamKind kind = KindOf(reader.TakeLoop());
        map.isdb = map.isdb || kind.isdb;
        if ((streamType == PRIVATE_SECTIONS || kind.signalled) && !reader.failed()) {
            map.applicationPids.push_back(pid);
        }
    }
    return reader.failed() ? std::nullopt : std::optional(map);
}

std::optional<std::vector<ServiceName>> ParseServiceDescription(ByteSpan section) {
    const auto table = ParseTableSection(section);
    if (!table || table->tableId != DESCRIPTION_TABLE) {
        return std::nullopt;
    }
    std::vector<ServiceName> names;
    ByteReader reader(table->body);
    reader.U16();  // the original network
    reader.U8();
    while (reader.left() > 0) {
        const uint16_t service = reader.U16();
        reader.U8();  // which tables of events there are
        const ByteSpan name = NameIn(reader.TakeLoop());
        // A service without a name descriptor keeps its number as its only identification.
        if (!name.empty() && !reader.failed()) {
            names.push_back({service, name});
        }
    }
    return reader.failed() ? std::nullopt : std::optional(names);
}

}  // namespace applist::sim
