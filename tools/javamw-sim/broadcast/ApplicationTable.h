// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "broadcast/ByteReader.h"
#include "broadcast/Text.h"

namespace applist::sim {

/// Table id of the Application Information Table, the same in DVB (ETSI TS 102 809) and in ISDB
/// (ARIB STD-B24, volume 4).
constexpr uint8_t APPLICATION_TABLE = 0x74;

/// What the broadcaster wants done with an application; other codes stop or hide it.
constexpr uint8_t CONTROL_AUTOSTART = 1;
constexpr uint8_t CONTROL_PRESENT = 2;

/// Visible to viewers and to other applications; 1 is for applications only, 0 for nobody.
constexpr uint8_t VISIBLE_ALL = 3;

struct ApplicationName {
    std::string language;  ///< Three bytes as sent, "ita"; broadcasts also carry malformed ones.
    std::string text;      ///< UTF-8.

    bool operator==(const ApplicationName&) const = default;
};

struct Application {
    uint32_t organisation = 0;
    uint16_t id = 0;
    uint8_t controlCode = 0;
    uint8_t visibility = 0;  ///< 0 also when the broadcast does not say.
    uint8_t priority = 0;
    std::vector<ApplicationName> names;  ///< In the order of the broadcast.
    std::string location;  ///< A URL or a path; bytes as sent, empty when the broadcast names none.

    bool operator==(const Application&) const = default;
};

/// One section of an Application Information Table.
struct ApplicationTable {
    uint16_t type = 0;  ///< 0x0001 DVB-J, 0x0010 HbbTV; 0 where the source has no number for it.
    bool test = false;  ///< Sent for trials; not for viewers.
    std::vector<Application> applications;

    bool operator==(const ApplicationTable&) const = default;
};

/// section runs from the table id to the CRC, which is not checked here. Nothing when it is no such
/// table or its loops do not fit. A descriptor that is too short counts as absent.
std::optional<ApplicationTable> ParseApplicationTable(ByteSpan section,
                                                      TextCoding coding = TextCoding::Dvb);

/// Organisation and application in hexadecimal: "0000000b.1ab7".
std::string UniqueId(const Application& application);

/// "AUTOSTART", or "0x09" for a code without a name.
std::string ControlName(uint8_t controlCode);

/// "HbbTV", or "0x0123" for a type without a name; empty for 0.
std::string TypeName(uint16_t type);

/// Fills application from its own descriptors and those common to all of its table. The tags are
/// the same in DVB and in ISDB, which adds some (boundaries, caches, latencies: 0x30 to 0x33) that
/// say nothing of what is read here.
void ReadApplicationDescriptors(ByteSpan common, ByteSpan own, TextCoding coding,
                                Application& application);

}  // namespace applist::sim
