// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "broadcast/TableReader.h"

#include <algorithm>
#include <array>
#include <cstring>

#include <dvbpsi/dvbpsi.h>
// The headers of the library must be included in this order.
#include <dvbpsi/psi.h>

#include "broadcast/PacketReader.h"

namespace applist::sim {

ApplicationTable JoinApplicationSections(const SubTable& table, TextCoding coding, Damage& damage) {
    ApplicationTable joined;
    for (const auto& section : table.sections) {
        if (auto part = ParseApplicationTable(section, coding)) {
            // Earlier sections go in front, so that the applications keep the order of the
            // broadcast.
            part->applications.insert(part->applications.begin(), joined.applications.begin(),
                                      joined.applications.end());
            joined = std::move(*part);
        } else {
            damage.Add(&Damage::malformedSections);
        }
    }
    return joined;
}

std::optional<SubTable> SubTableCollector::Add(const TableSection& section, ByteSpan bytes) {
    // A section that is not current announces a version that does not apply yet.
    if (!section.current) {
        return std::nullopt;
    }
    const Key key(section.tableId, section.extension);
    Collection& collection = m_collections[key];
    if (IsRepetition(collection, section, bytes)) {
        return std::nullopt;
    }
    // Sections of different versions must not be mixed in one table.
    if (section.version != collection.collecting) {
        collection.collecting = section.version;
        collection.sections.clear();
    }
    collection.sections[section.number].assign(bytes.begin(), bytes.end());
    if (collection.sections.size() <= section.lastNumber) {
        return std::nullopt;
    }
    collection.collecting = -1;
    if (section.version == collection.complete && !IsConfirmed(collection)) {
        return std::nullopt;
    }
    SubTable table = Assemble(key, collection);
    collection.complete = section.version;
    collection.lastComplete = std::exchange(collection.sections, {});
    collection.unconfirmed.clear();
    return table;
}

// Broadcasts repeat every table continuously. A repetition contains nothing new.
bool SubTableCollector::IsRepetition(Collection& collection, const TableSection& section,
                                     ByteSpan bytes) {
    const bool repeated = section.version == collection.complete &&
                          section.version != collection.collecting &&
                          std::ranges::equal(collection.lastComplete[section.number], bytes);
    const auto other = collection.unconfirmed.find(section.number);
    if (repeated && other != collection.unconfirmed.end() &&
        !std::ranges::equal(other->second, bytes)) {
        collection.unconfirmed.clear();
    }
    return repeated;
}

bool SubTableCollector::IsConfirmed(Collection& collection) {
    const bool confirmed = collection.sections == collection.unconfirmed;
    if (!confirmed) {
        collection.unconfirmed = std::exchange(collection.sections, {});
    }
    return confirmed;
}

std::vector<SubTable> SubTableCollector::TakeIncomplete(Damage& damage) const {
    std::vector<SubTable> tables;
    for (const auto& [key, collection] : m_collections) {
        // An incomplete update is left out, because a complete earlier version was delivered.
        if (collection.complete < 0 && !collection.sections.empty()) {
            tables.push_back(Assemble(key, collection));
            ++damage.incompleteTables;
        }
    }
    return tables;
}

SubTable SubTableCollector::Assemble(const Key& key, const Collection& collection) {
    SubTable table{key.first, key.second, collection.complete >= 0, {}};
    for (const auto& [number, section] : collection.sections) {
        table.sections.push_back(section);
    }
    return table;
}

namespace {

// ISO/IEC 13818-1 limits a private section to 4096 bytes.
constexpr int SECTION_MAX_SIZE = 4096;
constexpr size_t LENGTH_FIELD_END = 3;
constexpr size_t HEADER_SIZE = 4;
constexpr uint8_t BEGINS_SECTION = 0x40;
constexpr uint8_t SCRAMBLED = 0xC0;
constexpr uint8_t HAS_ADAPTATION = 0x20;
constexpr uint8_t HAS_PAYLOAD = 0x10;

// Returns where the payload begins, or the size of the packet if it contains none.
size_t PayloadStart(ByteSpan packet) {
    if ((packet[3] & HAS_PAYLOAD) == 0) {
        return PACKET_SIZE;
    }
    return (packet[3] & HAS_ADAPTATION) == 0 ? HEADER_SIZE : HEADER_SIZE + 1U + packet[HEADER_SIZE];
}

// Returns where the first section of a packet begins. The first byte of the payload points there.
size_t SectionStart(ByteSpan packet) {
    const size_t payload = PayloadStart(packet);
    return payload < PACKET_SIZE ? payload + 1U + packet[payload] : PACKET_SIZE;
}

// The library does not check that lengths stay within the packet.
bool LengthsFit(ByteSpan packet) {
    if ((packet[3] & HAS_PAYLOAD) == 0) {
        return true;
    }
    return ((packet[1] & BEGINS_SECTION) != 0 ? SectionStart(packet) : PayloadStart(packet)) <
           PACKET_SIZE;
}

bool IsWanted(uint16_t pid, uint8_t tableId) {
    switch (pid) {
        case ASSOCIATION_PID:
            return tableId == ASSOCIATION_TABLE;
        case DESCRIPTION_PID:
            return tableId == DESCRIPTION_TABLE;
        default:
            return tableId == MAP_TABLE || tableId == APPLICATION_TABLE;
    }
}

// Video and audio begin with bytes that are not an id of these tables.
bool BeginsTable(uint16_t pid, ByteSpan packet) {
    if ((packet[1] & BEGINS_SECTION) == 0 || (packet[3] & SCRAMBLED) != 0) {
        return false;
    }
    const size_t start = SectionStart(packet);
    return start < PACKET_SIZE && IsWanted(pid, packet[start]);
}

}  // namespace

// Uses the library's generic section decoder, which delivers sections of any table. The library has
// table decoders too, but none for application information tables.
struct TableReader::Pid {
    Pid(TableReader& reader, uint16_t pid)
        : owner(reader), number(pid), handle(dvbpsi_new(&Pid::OnMessage, DVBPSI_MSG_ERROR)) {
        handle->p_sys = this;
        handle->p_decoder = static_cast<dvbpsi_decoder_t*>(
            dvbpsi_decoder_new(&Pid::OnSection, SECTION_MAX_SIZE, true, sizeof(dvbpsi_decoder_t)));
    }
    ~Pid() {
        dvbpsi_decoder_delete(handle->p_decoder);
        handle->p_decoder = nullptr;
        dvbpsi_delete(handle);
    }
    Pid(const Pid&) = delete;
    Pid& operator=(const Pid&) = delete;

    void Push(ByteSpan packet) {
        if ((packet[3] & SCRAMBLED) != 0) {
            owner.m_damage.Add(&Damage::scrambledPackets);
            return;
        }
        if (!LengthsFit(packet)) {
            owner.m_damage.Add(&Damage::malformedPackets);
            return;
        }
        // The library takes a pointer to non-const bytes, and the stream is read-only.
        std::array<uint8_t, PACKET_SIZE> copy{};
        std::ranges::copy(packet, copy.begin());
        dvbpsi_packet_push(handle, copy.data());
    }

    static void OnSection(dvbpsi_t* handle, dvbpsi_psi_section_t* section) noexcept {
        Pid& pid = *static_cast<Pid*>(handle->p_sys);
        pid.owner.OnSection(pid, ByteSpan(section->p_data, LENGTH_FIELD_END + section->i_length));
        // The callback owns the section, so the handler may use its bytes only during the call.
        dvbpsi_DeletePSISections(section);
    }
    // The library reports errors only as text.
    static void OnMessage(dvbpsi_t* handle, dvbpsi_msg_level_t /*level*/,
                          const char* text) noexcept {
        if (handle->p_sys != nullptr) {
            const bool crc = std::strstr(text, "CRC") != nullptr;
            const bool gap = std::strstr(text, "discontinuity") != nullptr;
            static_cast<Pid*>(handle->p_sys)
                ->owner.m_damage.Add(crc   ? &Damage::wrongChecksums
                                     : gap ? &Damage::missingPackets
                                           : &Damage::malformedSections);
        }
    }

    TableReader& owner;
    uint16_t number;
    SubTableCollector collector;
    dvbpsi_t* handle;
};

TableReader::TableReader(Handler handler, Damage& damage)
    : m_handler(std::move(handler)), m_damage(damage) {
    Open(ASSOCIATION_PID);
    Open(DESCRIPTION_PID);
}

TableReader::~TableReader() = default;

void TableReader::Open(uint16_t pid) {
    if (!m_open[pid]) {
        m_open.set(pid);
        m_pids[pid] = std::make_unique<Pid>(*this, pid);
    }
}

void TableReader::Push(ByteSpan packet) {
    const uint16_t pid = PacketPid(packet);
    if (!m_open[pid]) {
        if (!BeginsTable(pid, packet)) {
            return;
        }
        Open(pid);
    }
    m_pids.at(pid)->Push(packet);
}

void TableReader::OnSection(Pid& pid, ByteSpan section) {
    // A PID may carry other tables too, which are not damage.
    if (section.empty() || !IsWanted(pid.number, section[0])) {
        return;
    }
    const auto head = ParseTableSection(section);
    if (!head) {
        m_damage.Add(&Damage::malformedSections);
        return;
    }
    if (const auto table = pid.collector.Add(*head, section)) {
        m_handler(pid.number, *table);
    }
}

void TableReader::Finish() {
    // A handler may open more PIDs, which are empty.
    for (const auto& [number, pid] : m_pids) {
        for (const SubTable& table : pid->collector.TakeIncomplete(m_damage)) {
            m_handler(number, table);
        }
    }
}

}  // namespace applist::sim
