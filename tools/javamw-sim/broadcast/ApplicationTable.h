// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
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

/// Visible to viewers and to other applications. 1 means other applications only, 0 means not
/// visible.
constexpr uint8_t VISIBLE_ALL = 3;
constexpr uint8_t VISIBLE_APPLICATIONS = 1;

/// The name of an application in one language.
struct ApplicationName {
    std::string language;  ///< Three bytes as sent, "ita"; may be malformed.
    std::string text;      ///< UTF-8.

    bool operator==(const ApplicationName&) const = default;
};

/// A profile of a platform and the version of it that an application needs at least.
struct ApplicationProfile {
    uint16_t profile = 0;
    uint8_t major = 0;
    uint8_t minor = 0;
    uint8_t micro = 0;

    bool operator==(const ApplicationProfile&) const = default;
};

/// A rating as the broadcast contains it; EN 300 468 defines 1 to 15 as the age less 3.
struct ParentalRating {
    std::string country;  ///< Three bytes as sent, "ITA".
    uint8_t rating = 0;

    bool operator==(const ParentalRating&) const = default;
};

/// Conditions by which a receiver offers an application, in addition to control code and
/// visibility. The simulator's lists do not depend on them.
struct ReceiverConditions {
    std::vector<ApplicationProfile> profiles{};  ///< In the order of the broadcast.
    std::optional<bool> serviceBound{};          ///< True if it ends with its service.
    std::optional<uint8_t> usage{};              ///< 1 is a digital text application.
    std::vector<std::string> boundaries{};       ///< URLs that the application may not leave.
    std::vector<ParentalRating> ratings{};
    std::vector<std::string> transports{};  ///< "HTTP", "carousel"; the preferred one first.

    bool operator==(const ReceiverConditions&) const = default;
};

/// An application of an Application Information Table.
struct Application {
    uint32_t organisation = 0;
    uint16_t id = 0;
    uint8_t controlCode = 0;
    uint8_t visibility = 0;  ///< 0 if the broadcast does not contain it.
    uint8_t priority = 0;
    std::vector<ApplicationName> names;  ///< In the order of the broadcast.
    std::string location;                ///< A URL or a path, bytes as sent; empty if absent.
    ReceiverConditions conditions{};

    bool operator==(const Application&) const = default;
};

/// One section of an Application Information Table.
struct ApplicationTable {
    uint16_t type = 0;  ///< 0x0001 DVB-J, 0x0010 HbbTV; 0 if the source has no number.
    bool test = false;  ///< Sent for trials; not meant for viewers.
    std::vector<Application> applications;

    bool operator==(const ApplicationTable&) const = default;
};

/// Parses a section from its table id to its CRC, which is not checked here. Returns nothing if it
/// is a different table or if its loops do not fit. A descriptor that is too short counts as
/// absent.
std::optional<ApplicationTable> ParseApplicationTable(ByteSpan section,
                                                      TextCoding coding = TextCoding::Dvb);

/// Returns organisation and application in hexadecimal: "0000000b.1ab7".
std::string UniqueId(const Application& application);

/// Returns "AUTOSTART", or "0x09" for a code without a name.
std::string ControlName(uint8_t controlCode);
/// Returns the control code with a name, or 0 if there is none.
uint8_t ControlCodeOf(std::string_view name);

/// Returns "HbbTV", "0x0123" for a type without a name, or an empty string for 0.
std::string TypeName(uint16_t type);

/// Fills application from its own descriptors and from the common ones of its table. DVB and ISDB
/// use the same tags. The additional tags of ISDB (0x30 to 0x33: boundaries, caches, latencies) are
/// ignored.
void ReadApplicationDescriptors(ByteSpan common, ByteSpan own, TextCoding coding,
                                Application& application);

}  // namespace applist::sim
