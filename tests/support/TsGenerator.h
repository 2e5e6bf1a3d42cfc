// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace applist::test {

using TsBytes = std::vector<uint8_t>;

/// An application as a broadcaster describes it. Names are pairs of language and text. The text is
/// in the broadcast's encoding and starts with the byte that selects the character table.
struct TsApplication {
    uint32_t organisation = 0;
    uint16_t id = 0;
    uint8_t controlCode = 2;
    uint8_t visibility = 3;
    std::vector<std::pair<std::string, std::string>> names{};
    uint8_t priority = 1;
    TsBytes descriptors = {};  ///< More of them, each whole.
};

/// How a service names the PID of an application table.
/// DataComponent is how ISDB describes data services.
enum class Signalling { Described, EmptyDescriptor, NoDescriptor, DataComponent };

/// Returns a whole section in the long form, CRC included.
TsBytes TsSection(uint8_t tableId, uint16_t extension, const TsBytes& body, uint8_t version = 0,
                  uint8_t number = 0);

/// Sets the section's number and the table's last section number, and recomputes the CRC.
TsBytes TsOneOf(TsBytes section, uint8_t number, uint8_t last);

/// A table of program numbers and the PIDs of their program maps.
TsBytes TsAssociation(const std::map<uint16_t, uint16_t>& programs, uint8_t version = 0);

/// A table of services and their names in the broadcast's encoding.
TsBytes TsDescription(const std::map<uint16_t, std::string>& names);

/// The program map of a service with video and application tables on the PIDs given.
TsBytes TsMap(uint16_t program, const std::vector<uint16_t>& applicationPids,
              Signalling signalling = Signalling::Described, uint8_t version = 0);

/// type 0x0001 is DVB-J; the highest bit marks a test table.
TsBytes TsApplications(const std::vector<TsApplication>& applications, uint16_t type = 0x0001,
                       uint8_t version = 0);

/// Transport over the interaction channel from a URL that begins with base.
TsBytes TsHttpTransport(uint8_t label, const std::string& base);

/// One descriptor: tag, length, content.
TsBytes TsDescriptor(uint8_t tag, const TsBytes& content);

/// Appends a CRC to bytes.
void TsAppendCrc(TsBytes& bytes);

/// A transport stream, built section by section.
class TsGenerator {
public:
    /// Splits section into packets of pid, starting in a new packet.
    void Add(uint16_t pid, const TsBytes& section);

    /// Adds a packet of pid with only a clock reference, in ticks of 90 kHz.
    void AddClock(uint16_t pid, uint64_t ticks);

    const TsBytes& stream() const { return m_stream; }

private:
    TsBytes m_stream;
    std::map<uint16_t, uint8_t> m_counters;
};

/// Adds padding of before and behind bytes around each packet: 4 and 0 make packets of 192 bytes, 0
/// and 16 packets of 204.
TsBytes TsRepacked(const TsBytes& stream, size_t before, size_t behind);

}  // namespace applist::test
