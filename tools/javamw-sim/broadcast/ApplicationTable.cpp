// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "broadcast/ApplicationTable.h"

#include <algorithm>
#include <array>
#include <glib.h>
#include <utility>

#include "broadcast/ByteReader.h"
#include "broadcast/ProgramTables.h"

namespace applist::sim {
namespace {

// ETSI TS 102 809: the highest bit of the extension is the test flag, the rest is the type.
constexpr uint16_t TEST_FLAG = 0x8000;
// Index 0 is empty because ETSI TS 102 809 assigns control codes from 1.
constexpr std::array<std::string_view, 9> CONTROL_NAMES{
    "",         "AUTOSTART", "PRESENT",  "DESTROY",           "KILL",
    "PREFETCH", "REMOTE",    "DISABLED", "PLAYBACK_AUTOSTART"};

std::string Hexadecimal(unsigned value, int digits) {
    g_autofree char* text = g_strdup_printf("0x%0*x", digits, value);
    return text;
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
    // The common descriptors come first and apply to every application of the table.
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
    // A failed reader keeps failing, so one check covers all reads above.
    return body.failed() || loop.failed() ? std::nullopt : std::optional(std::move(table));
}

std::string UniqueId(const Application& application) {
    g_autofree char* text = g_strdup_printf("%08x.%04x", application.organisation, application.id);
    return text;
}

std::string ControlName(uint8_t controlCode) {
    const bool known = controlCode > 0 && controlCode < CONTROL_NAMES.size();
    return known ? std::string(CONTROL_NAMES.at(controlCode)) : Hexadecimal(controlCode, 2);
}

uint8_t ControlCodeOf(std::string_view name) {
    const auto* const found = std::ranges::find(CONTROL_NAMES, name);
    return found == CONTROL_NAMES.end() ? 0 : static_cast<uint8_t>(found - CONTROL_NAMES.begin());
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

namespace {

// Tags of TS 102 809. A Ginga-NCL application (ABNT NBR 15606-3) encodes its location like a Java
// application.
constexpr uint8_t APPLICATION_DESCRIPTOR = 0x00;
constexpr uint8_t NAME_DESCRIPTOR = 0x01;
constexpr uint8_t TRANSPORT_DESCRIPTOR = 0x02;
constexpr uint8_t JAVA_LOCATION_DESCRIPTOR = 0x04;
constexpr uint8_t NCL_LOCATION_DESCRIPTOR = 0x07;
constexpr uint8_t HTML_LOCATION_DESCRIPTOR = 0x09;
constexpr uint8_t SIMPLE_LOCATION_DESCRIPTOR = 0x15;
constexpr uint8_t USAGE_DESCRIPTOR = 0x16;
constexpr uint8_t BOUNDARY_DESCRIPTOR = 0x17;
constexpr uint8_t PARENTAL_RATING_DESCRIPTOR = 0x55;
constexpr uint16_t CAROUSEL_PROTOCOL = 0x0001;
constexpr uint16_t HTTP_PROTOCOL = 0x0003;
constexpr uint8_t SERVICE_BOUND_FLAG = 0x80;
// A profile has two bytes, and its version has three: major, minor and micro.
constexpr size_t PROFILE_SIZE = 5;
constexpr size_t LANGUAGE_SIZE = 3;
constexpr size_t COUNTRY_SIZE = 3;

/// A transport that delivers applications to the receiver.
struct Transport {
    uint16_t protocol = 0;
    uint8_t label = 0;
    std::string urlBase{};  ///< Empty for transports without an address.
};

/// Contents of the descriptors before they are combined.
struct Found {
    std::vector<uint8_t> labels;  ///< The transports of the application, the preferred one first.
    std::vector<Transport> transports;
    std::string path;
};

std::string Text(ByteSpan bytes) {
    return {bytes.begin(), bytes.end()};
}

void ReadApplicationDescriptor(ByteReader reader, Application& application, Found& found) {
    ByteReader profiles(reader.Take(reader.U8()));
    const uint8_t flags = reader.U8();
    const uint8_t priority = reader.U8();
    // A descriptor that is too short counts as absent, so nothing is stored before this check.
    if (!reader.failed()) {
        application.visibility = flags >> 5U & 3U;
        application.priority = priority;
        application.conditions.serviceBound = (flags & SERVICE_BOUND_FLAG) != 0;
        while (profiles.left() >= PROFILE_SIZE) {
            application.conditions.profiles.push_back(
                {profiles.U16(), profiles.U8(), profiles.U8(), profiles.U8()});
        }
        // ETSI TS 102 809: the labels fill the rest of the descriptor, without a length field.
        const ByteSpan labels = reader.Take(reader.left());
        found.labels.assign(labels.begin(), labels.end());
    }
}

void ReadNames(ByteReader reader, TextCoding coding, Application& application) {
    while (reader.left() > 0) {
        const std::string language = Text(reader.Take(LANGUAGE_SIZE));
        const ByteSpan text = reader.Take(reader.U8());
        // A name that cannot be decoded is left out, and the other languages remain.
        if (auto name = DecodeText(text, language, coding); name && !reader.failed()) {
            application.names.push_back({language, std::move(*name)});
        }
    }
}

void ReadTransport(ByteReader reader, Found& found) {
    Transport transport;
    transport.protocol = reader.U16();
    transport.label = reader.U8();
    // Only HTTP has an address. The selector bytes of other protocols are not needed for a list.
    if (transport.protocol == HTTP_PROTOCOL) {
        transport.urlBase = Text(reader.Take(reader.U8()));
    }
    if (!reader.failed()) {
        found.transports.push_back(std::move(transport));
    }
}

void ReadLocation(ByteReader reader, bool java, Found& found) {
    std::string root = Text(reader.Take(reader.U8()));
    if (java) {
        reader.Take(reader.U8());  // where other classes are
        // A base directory may or may not end in a slash, and the class name follows it.
        root += root.ends_with('/') ? "" : "/";
    }
    if (!reader.failed()) {
        found.path = root + Text(reader.Take(reader.left()));
    }
}

void ReadBoundaries(ByteReader reader, ReceiverConditions& conditions) {
    for (uint8_t count = reader.U8(); count > 0; --count) {
        std::string boundary = Text(reader.Take(reader.U8()));
        if (reader.failed()) {
            return;
        }
        conditions.boundaries.push_back(std::move(boundary));
    }
}

void ReadRatings(ByteReader reader, ReceiverConditions& conditions) {
    // Each entry is a country and one more byte, the rating. A truncated entry is ignored.
    while (reader.left() > COUNTRY_SIZE) {
        std::string country = Text(reader.Take(COUNTRY_SIZE));
        conditions.ratings.push_back({std::move(country), reader.U8()});
    }
}

void ReadConditions(ByteSpan loop, ReceiverConditions& conditions) {
    ForEachDescriptor(loop, [&](uint8_t tag, ByteSpan content) {
        const ByteReader reader(content);
        if (tag == USAGE_DESCRIPTOR && !content.empty()) {
            conditions.usage = content.front();
        } else if (tag == BOUNDARY_DESCRIPTOR) {
            ReadBoundaries(reader, conditions);
        } else if (tag == PARENTAL_RATING_DESCRIPTOR) {
            ReadRatings(reader, conditions);
        }
    });
}

void ReadTransports(ByteSpan loop, Found& found) {
    ForEachDescriptor(loop, [&](uint8_t tag, ByteSpan content) {
        if (tag == TRANSPORT_DESCRIPTOR) {
            ReadTransport(ByteReader(content), found);
        }
    });
}

void ReadOwn(ByteSpan loop, TextCoding coding, Application& application, Found& found) {
    ForEachDescriptor(loop, [&](uint8_t tag, ByteSpan content) {
        const ByteReader reader(content);
        switch (tag) {
            case APPLICATION_DESCRIPTOR:
                return ReadApplicationDescriptor(reader, application, found);
            case NAME_DESCRIPTOR:
                return ReadNames(reader, coding, application);
            case JAVA_LOCATION_DESCRIPTOR:
            case NCL_LOCATION_DESCRIPTOR:
                return ReadLocation(reader, true, found);
            case HTML_LOCATION_DESCRIPTOR:
                return ReadLocation(reader, false, found);
            case SIMPLE_LOCATION_DESCRIPTOR:
                found.path = Text(content);
                return;
            default:
                return;
        }
    });
}

// Returns the address of the first transport, in the order of preference, that has one.
std::string UrlBase(const Found& found) {
    for (const uint8_t label : found.labels) {
        for (const Transport& transport : found.transports) {
            if (transport.label == label && !transport.urlBase.empty()) {
                return transport.urlBase;
            }
        }
    }
    return {};
}

std::string ProtocolName(uint16_t protocol) {
    switch (protocol) {
        case CAROUSEL_PROTOCOL:
            return "carousel";
        case HTTP_PROTOCOL:
            return "HTTP";
        default:
            return Hexadecimal(protocol, 4);
    }
}

// Returns the transports of the application, in the order of preference.
std::vector<std::string> ProtocolNames(const Found& found) {
    std::vector<std::string> names;
    for (const uint8_t label : found.labels) {
        const auto transport = std::ranges::find(found.transports, label, &Transport::label);
        if (transport != found.transports.end()) {
            names.push_back(ProtocolName(transport->protocol));
        }
    }
    return names;
}

// If the address ends in a slash and the path begins with one, keeps only one of them.
std::string Joined(const std::string& base, const std::string& path) {
    const bool twoSlashes = base.ends_with('/') && path.starts_with('/');
    return base + (twoSlashes ? path.substr(1) : path);
}

}  // namespace

void ReadApplicationDescriptors(ByteSpan common, ByteSpan own, TextCoding coding,
                                Application& application) {
    Found found;
    // Transports with the same label may occur in both loops. The first match is used, so the
    // application's own transports precede the common ones.
    ReadTransports(own, found);
    ReadTransports(common, found);
    ReadOwn(own, coding, application, found);
    // The application's own loop is read last, so that its usage replaces the common one.
    ReadConditions(common, application.conditions);
    ReadConditions(own, application.conditions);
    application.conditions.transports = ProtocolNames(found);
    application.location = Joined(UrlBase(found), found.path);
}

}  // namespace applist::sim
