// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "broadcast/ApplicationTable.h"

#include <array>
#include <cstdio>
#include <utility>

#include "broadcast/ApplicationDescriptors.h"
#include "broadcast/ProgramTables.h"

namespace applist::sim {
namespace {

constexpr uint16_t TEST_FLAG = 0x8000;

std::string Hexadecimal(unsigned value, int digits) {
    std::array<char, sizeof "0x0000"> text{};
    static_cast<void>(std::snprintf(text.data(), text.size(), "0x%0*x", digits, value & 0xFFFFU));
    return text.data();
}

}  // namespace

std::optional<ApplicationTable> ParseApplicationTable(ByteSpan section, TextCoding coding) {
    const auto header = ParseTableSection(section);
    if (!header || header->tableId != APPLICATION_TABLE) {
        return std::nullopt;
    }
    ApplicationTable table;
    table.type = static_cast<uint16_t>(header->extension & ~TEST_FLAG);
    table.test = (header->extension & TEST_FLAG) != 0;
    ByteReader body(header->body);
    const ByteSpan common = body.TakeLoop();
    ByteReader loop(body.TakeLoop());
    while (loop.left() > 0) {
        Application application;
        application.organisation = loop.U32();
        application.id = loop.U16();
        application.controlCode = loop.U8();
        ReadApplicationDescriptors(common, loop.TakeLoop(), coding, application);
        table.applications.push_back(std::move(application));
    }
    return body.failed() || loop.failed() ? std::nullopt : std::optional(std::move(table));
}

std::string UniqueId(const Application& application) {
    std::array<char, sizeof "0000000b.1ab7"> text{};
    static_cast<void>(std::snprintf(text.data(), text.size(), "%08x.%04x", application.organisation,
                                    application.id));
    return text.data();
}

std::string ControlName(uint8_t controlCode) {
    constexpr std::array NAMES{"",         "AUTOSTART", "PRESENT",  "DESTROY",           "KILL",
                               "PREFETCH", "REMOTE",    "DISABLED", "PLAYBACK_AUTOSTART"};
    const bool known = controlCode > 0 && controlCode < NAMES.size();
    return known ? NAMES.at(controlCode) : Hexadecimal(controlCode, 2);
}

// Registered by DVB (TS 101 162), ARIB (STD-B24, volume 4) and ABNT (NBR 15606-3). 1 is the Java
// platform of each: DVB-J, ARIB-J, Ginga-J.
std::string TypeName(uint16_t type) {
    switch (type) {
        case 0x0000:
            return {};
        case 0x0001:
            return "DVB-J";
        case 0x0002:
            return "DVB-HTML";
        case 0x0009:
            return "Ginga-NCL";
        case 0x0010:
            return "HbbTV";
        case 0x0011:
            return "ARIB-HTML5";
        default:
            return Hexadecimal(type, 4);
    }
}

}  // namespace applist::sim
