// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "support/TsGenerator.h"

#include <algorithm>

namespace applist::test {
namespace {

constexpr size_t PACKET_SIZE = 188;
constexpr size_t HEADER_SIZE = 4;
constexpr uint8_t STUFFING = 0xFF;
constexpr uint16_t RESERVED_BITS = 0xE000;
constexpr uint16_t LOOP_RESERVED_BITS = 0xF000;

void Append8(TsBytes& bytes, unsigned value) {
    bytes.push_back(static_cast<uint8_t>(value));
}

void Append16(TsBytes& bytes, unsigned value) {
    Append8(bytes, value >> 8U & 0xFFU);
    Append8(bytes, value & 0xFFU);
}

void Append32(TsBytes& bytes, uint32_t value) {
    Append16(bytes, value >> 16U);
    Append16(bytes, value & 0xFFFFU);
}

void Append(TsBytes& bytes, const TsBytes& more) {
    bytes.insert(bytes.end(), more.begin(), more.end());
}

void AppendLoop(TsBytes& bytes, const TsBytes& loop) {
    Append16(bytes, LOOP_RESERVED_BITS | static_cast<unsigned>(loop.size()));
    Append(bytes, loop);
}

TsBytes SignallingDescriptor(Signalling signalling) {
    switch (signalling) {
        case Signalling::Described:
            return TsDescriptor(0x6F, {0x80, 0x01, 0xE0});
        case Signalling::EmptyDescriptor:
            return TsDescriptor(0x6F, {});
        case Signalling::DataComponent:
            return TsDescriptor(0xFD, {0x00, 0x0A, 0x00, 0x01, 0xE0});
        case Signalling::NoDescriptor:
            break;
    }
    return {};
}

void AppendStream(TsBytes& map, uint8_t type, uint16_t pid, const TsBytes& descriptors) {
    Append8(map, type);
    Append16(map, RESERVED_BITS | pid);
    AppendLoop(map, descriptors);
}

TsBytes Names(const TsApplication& application) {
    TsBytes content;
    for (const auto& [language, text] : application.names) {
        content.insert(content.end(), language.begin(), language.end());
        Append8(content, static_cast<unsigned>(text.size()));
        content.insert(content.end(), text.begin(), text.end());
    }
    return content;
}

void AppendApplication(TsBytes& loop, const TsApplication& application) {
    Append32(loop, application.organisation);
    Append16(loop, application.id);
    Append8(loop, application.controlCode);
    const auto flags = static_cast<uint8_t>(0x1FU | (application.visibility & 3U) << 5U);
    // One profile of five bytes, the flags, the priority, one transport label.
    TsBytes descriptors =
        TsDescriptor(0x00, {5, 0x00, 0x01, 1, 0, 0, flags, application.priority, 0x01});
    if (!application.names.empty()) {
        Append(descriptors, TsDescriptor(0x01, Names(application)));
    }
    Append(descriptors, application.descriptors);
    AppendLoop(loop, descriptors);
}

}  // namespace

TsBytes TsDescriptor(uint8_t tag, const TsBytes& content) {
    TsBytes bytes{tag, static_cast<uint8_t>(content.size())};
    Append(bytes, content);
    return bytes;
}

void TsAppendCrc(TsBytes& bytes) {
    uint32_t crc = 0xFFFFFFFF;
    for (const uint8_t byte : bytes) {
        crc ^= static_cast<uint32_t>(byte) << 24U;
        for (int bit = 0; bit < 8; ++bit) {
            crc = (crc & 0x80000000U) != 0 ? crc << 1U ^ 0x04C11DB7U : crc << 1U;
        }
    }
    Append32(bytes, crc);
}

TsBytes TsSection(uint8_t tableId, uint16_t extension, const TsBytes& body, uint8_t version,
                  uint8_t number) {
    constexpr size_t AROUND_BODY = 9;
    TsBytes section{tableId};
    Append16(section, 0xB000U | static_cast<unsigned>(body.size() + AROUND_BODY));
    Append16(section, extension);
    Append8(section, 0xC1U | static_cast<unsigned>(version) << 1U);
    Append8(section, number);
    Append8(section, number);
    Append(section, body);
    TsAppendCrc(section);
    return section;
}

TsBytes TsOneOf(TsBytes section, uint8_t number, uint8_t last) {
    constexpr size_t CRC_SIZE = 4;
    section.at(6) = number;
    section.at(7) = last;
    section.resize(section.size() - CRC_SIZE);
    TsAppendCrc(section);
    return section;
}

TsBytes TsAssociation(const std::map<uint16_t, uint16_t>& programs, uint8_t version) {
    TsBytes body{0x00, 0x00, 0xE0, 0x10};  // where the network table is
    for (const auto& [number, pid] : programs) {
        Append16(body, number);
        Append16(body, RESERVED_BITS | pid);
    }
    return TsSection(0x00, 1, body, version);
}

TsBytes TsDescription(const std::map<uint16_t, std::string>& names) {
    TsBytes body{0x00, 0x01, 0xFF};  // the network
    for (const auto& [service, name] : names) {
        TsBytes content{0x01, 0x02, 'P', 'R'};  // television, who provides it
        Append8(content, static_cast<unsigned>(name.size()));
        content.insert(content.end(), name.begin(), name.end());
        Append16(body, service);
        Append8(body, 0xFC);
        AppendLoop(body, TsDescriptor(0x48, content));
    }
    return TsSection(0x42, 1, body);
}

TsBytes TsMap(uint16_t program, const std::vector<uint16_t>& applicationPids, Signalling signalling,
              uint8_t version) {
    constexpr uint16_t PICTURE_PID = 0x0100;
    TsBytes body;
    Append16(body, RESERVED_BITS | PICTURE_PID);
    AppendLoop(body, {});
    AppendStream(body, 0x1B, PICTURE_PID, {});
    for (const uint16_t pid : applicationPids) {
        AppendStream(body, 0x05, pid, SignallingDescriptor(signalling));
    }
    return TsSection(0x02, program, body, version);
}

TsBytes TsApplications(const std::vector<TsApplication>& applications, uint16_t type,
                       uint8_t version) {
    TsBytes loop;
    for (const TsApplication& application : applications) {
        AppendApplication(loop, application);
    }
    TsBytes body;
    AppendLoop(body, {});
    AppendLoop(body, loop);
    return TsSection(0x74, type, body, version);
}

TsBytes TsHttpTransport(uint8_t label, const std::string& base) {
    TsBytes content{0x00, 0x03, label, static_cast<uint8_t>(base.size())};
    content.insert(content.end(), base.begin(), base.end());
    Append8(content, 0);  // no extensions
    return TsDescriptor(0x02, content);
}

void TsGenerator::Add(uint16_t pid, const TsBytes& section) {
    TsBytes payload{0};  // the section begins right behind this pointer
    Append(payload, section);
    constexpr size_t ROOM = PACKET_SIZE - HEADER_SIZE;
    for (size_t start = 0; start < payload.size(); start += ROOM) {
        const unsigned begins = start == 0 ? 0x40U : 0U;
        Append8(m_stream, 0x47);
        Append8(m_stream, begins | pid >> 8U);
        Append8(m_stream, pid & 0xFFU);
        Append8(m_stream, 0x10U | (m_counters[pid]++ & 0x0FU));
        const size_t size = std::min(ROOM, payload.size() - start);
        const auto first = payload.begin() + static_cast<std::ptrdiff_t>(start);
        m_stream.insert(m_stream.end(), first, first + static_cast<std::ptrdiff_t>(size));
        m_stream.insert(m_stream.end(), ROOM - size, STUFFING);
    }
}

void TsGenerator::AddClock(uint16_t pid, uint64_t ticks) {
    const size_t start = m_stream.size();
    Append8(m_stream, 0x47);
    Append16(m_stream, pid);
    Append8(m_stream, 0x20U | m_counters[pid]);
    Append8(m_stream, PACKET_SIZE - HEADER_SIZE - 1);
    Append8(m_stream, 0x10);
    Append32(m_stream, static_cast<uint32_t>(ticks >> 1U));
    Append16(m_stream, static_cast<unsigned>(ticks & 1U) << 15U | 0x7E00U);
    m_stream.resize(start + PACKET_SIZE, STUFFING);
}

TsBytes TsRepacked(const TsBytes& stream, size_t before, size_t behind) {
    TsBytes repacked;
    for (size_t start = 0; start < stream.size(); start += PACKET_SIZE) {
        repacked.insert(repacked.end(), before, 0x10);
        const auto first = stream.begin() + static_cast<std::ptrdiff_t>(start);
        const size_t size = std::min(PACKET_SIZE, stream.size() - start);
        repacked.insert(repacked.end(), first, first + static_cast<std::ptrdiff_t>(size));
        repacked.insert(repacked.end(), behind, 0x20);
    }
    return repacked;
}

}  // namespace applist::test
