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

/// An application as a broadcaster describes it. Names are language and text, the text in the
/// broadcast's own coding with its table byte.
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

/// A whole section in the long form, CRC included.
TsBytes TsSection(uint8_t tableId, uint16_t extension, const TsBytes& body, uint8_t version = 0,
                  uint8_t number = 0);

/// section as one of several: the last of them has the number last. The CRC is made anew.
TsBytes TsOneOf(TsBytes section, uint8_t number, uint8_t last);

/// Program numbers and the PIDs of their maps.
TsBytes TsAssociation(const std::map<uint16_t, uint16_t>& programs, uint8_t version = 0);

/// Services and what they are called, in the broadcast's own coding.
TsBytes TsDescription(const std::map<uint16_t, std::string>& names);

/// One service with a picture and application tables on the PIDs given.
TsBytes TsMap(uint16_t program, const std::vector<uint16_t>& applicationPids,
              Signalling signalling = Signalling::Described, uint8_t version = 0);

/// type 0x0001 is DVB-J; the highest bit marks a table for trials.
TsBytes TsApplications(const std::vector<TsApplication>& applications, uint16_t type = 0x0001,
                       uint8_t version = 0);

/// Transport over the interaction channel from an address that begins with base.
TsBytes TsHttpTransport(uint8_t label, const std::string& base);

/// One descriptor: tag, length, content.
TsBytes TsDescriptor(uint8_t tag, const TsBytes& content);

/// Puts a CRC behind bytes.
void TsAppendCrc(TsBytes& bytes);

/// A transport stream that grows section by section.
class TsGenerator {
public:
    /// Cuts section into packets of pid, which begin with it.
    void Add(uint16_t pid, const TsBytes& section);

    /// A packet of pid with nothing but a clock reference, in ticks of 90 kHz.
    void AddClock(uint16_t pid, uint64_t ticks);

    const TsBytes& stream() const { return m_stream; }

private:
    TsBytes m_stream;
    std::map<uint16_t, uint8_t> m_counters;
};

/// stream with before and behind bytes of filling around each packet: 4 and 0 make packets of 192
/// bytes, 0 and 16 packets of 204.
TsBytes TsRepacked(const TsBytes& stream, size_t before, size_t behind);

}  // namespace applist::test
