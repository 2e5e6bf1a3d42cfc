// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "broadcast/ByteReader.h"

namespace applist::sim {

/// Table id of the Application Information Table (ETSI TS 102 809).
constexpr uint8_t APPLICATION_TABLE = 0x74;

/// What the broadcaster wants done with an application; other codes stop or hide it.
constexpr uint8_t CONTROL_AUTOSTART = 1;
constexpr uint8_t CONTROL_PRESENT = 2;

/// Visible to viewers and to other applications; 1 is for applications only, 0 for nobody.
constexpr uint8_t VISIBLE_ALL = 3;

struct ApplicationName {
    std::string language;  ///< Three bytes as sent, "ita"; broadcasts also carry malformed ones.
    std::string text;      ///< UTF-8.
};

struct Application {
    uint32_t organisation = 0;
    uint16_t id = 0;
    uint8_t controlCode = 0;
    uint8_t visibility = 0;  ///< 0 also when the broadcast does not say.
    uint8_t priority = 0;
    std::vector<ApplicationName> names;  ///< In the order of the broadcast.
};

/// One section of an Application Information Table.
struct ApplicationTable {
    uint16_t type = 0;  ///< 0x0001 DVB-J, 0x0010 HbbTV.
    bool test = false;  ///< Sent for trials; not for viewers.
    std::vector<Application> applications;
};

/// section runs from the table id to the CRC, which is not checked here. Nothing when it is no such
/// table or its loops do not fit. A descriptor that is too short counts as absent.
std::optional<ApplicationTable> ParseApplicationTable(ByteSpan section);

/// Organisation and application in hexadecimal: "0000000b.1ab7".
std::string UniqueId(const Application& application);

/// True iff the broadcast offers the application to the viewer.
bool IsOffered(const ApplicationTable& table, const Application& application);

}  // namespace applist::sim
