// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "broadcast/SectionFile.h"

#include <map>

#include <dvbpsi/dvbpsi.h>
// The headers of the library must be included in this order.
#include <dvbpsi/psi.h>

#include "broadcast/SubTableCollector.h"
#include "broadcast/Timeline.h"
#include "broadcast/TransportState.h"

namespace applist::sim {
namespace {

constexpr size_t HEADER_SIZE = 3;
constexpr uint8_t LONG_FORM = 0x80;
constexpr size_t CRC_SIZE = 4;
// ISO/IEC 13818-1 fills unused bytes with 0xFF, which is never a table id.
constexpr uint8_t STUFFING = 0xFF;

// Returns the size of the section that begins here, or 0 if it is not complete.
size_t SectionSize(ByteSpan bytes) {
    ByteReader reader(bytes);
    const uint8_t tableId = reader.U8();
    const size_t size = HEADER_SIZE + (reader.U16() & 0x0FFFU);
    const bool whole = !reader.failed() && size <= bytes.size();
    return whole && tableId != STUFFING ? size : 0;
}

bool HasCrc(ByteSpan section) {
    return (section[1] & LONG_FORM) != 0 && section.size() >= HEADER_SIZE + CRC_SIZE;
}

// The library does not modify the bytes, although its parameter is not const.
bool CrcIsRight(ByteSpan section) {
    auto* data = const_cast<uint8_t*>(section.data());
    // The view lives on the stack and borrows the bytes. Only the fields that the check reads are
    // set.
    dvbpsi_psi_section_t view{};
    view.b_syntax_indicator = true;
    view.i_table_id = section[0];
    view.p_data = data;
    view.p_payload_end = data + section.size() - CRC_SIZE;
    return dvbpsi_ValidPSISection(&view);
}

/// Iterates over the sections, and resynchronises after damage.
class SectionReader {
public:
    /// file and damage must outlive the reader. The reader adds to damage.
    SectionReader(ByteSpan file, Damage& damage) : m_left(file), m_damage(damage) {}

    /// Returns the next section in the long form with a correct CRC; empty at the end.
    ByteSpan Next() {
        while (!m_left.empty()) {
            const size_t size = SectionSize(m_left);
            if (size == 0) {
                ++m_damage.malformedSections;
                Search();
                continue;
            }
            const ByteSpan section = m_left.first(size);
            if (!HasCrc(section)) {
                m_left = m_left.subspan(size);
                continue;  // another kind of table
            }
            if (CrcIsRight(section)) {
                m_left = m_left.subspan(size);
                return section;
            }
            ++m_damage.wrongChecksums;
            SkipDamaged(size);
        }
        return {};
    }

private:
    // If the length was correct, the next section follows. Otherwise its position is unknown.
    void SkipDamaged(size_t size) {
        const ByteSpan behind = m_left.subspan(size);
        if (behind.empty() || BeginsWithSection(behind)) {
            m_left = behind;
        } else {
            Search();
        }
    }

    // Requires a valid CRC as well, because the table id alone is frequent in data.
    void Search() {
        do {
            m_left = m_left.subspan(1);
        } while (!m_left.empty() && !(m_left[0] == APPLICATION_TABLE && BeginsWithSection(m_left)));
    }

    ByteSpan m_left;
    Damage& m_damage;
};

/// Tables of applications by type.
class SectionState {
public:
    void Take(const SubTable& table, TextCoding coding, Damage& damage) {
        m_tables[table.extension] = std::make_shared<const ApplicationTable>(
            JoinApplicationSections(table, coding, damage));
    }

    std::vector<BroadcastService> Services() const {
        BroadcastService service;
        for (const auto& [type, table] : m_tables) {
            service.tables.push_back(table);
        }
        return service.tables.empty() ? std::vector<BroadcastService>()
                                      : std::vector<BroadcastService>{std::move(service)};
    }

private:
    std::map<uint16_t, std::shared_ptr<const ApplicationTable>> m_tables;
};

}  // namespace

bool BeginsWithSection(ByteSpan bytes) {
    const size_t size = SectionSize(bytes);
    return size > 0 && HasCrc(bytes.first(size)) && CrcIsRight(bytes.first(size));
}

Broadcast ScanSections(ByteSpan file, TextCoding coding) {
    Broadcast broadcast;
    SectionState state;
    Timeline timeline([&] { return state.Services(); }, broadcast.damage);
    SubTableCollector collector;
    const auto take = [&](const SubTable& table) {
        // A file of sections does not contain a clock.
        timeline.Change(table.replaces, std::nullopt,
                        [&] { state.Take(table, coding, broadcast.damage); });
    };
    SectionReader reader(file, broadcast.damage);
    for (ByteSpan section = reader.Next(); !section.empty(); section = reader.Next()) {
        const auto head = ParseTableSection(section);
        if (!head) {
            ++broadcast.damage.malformedSections;
        } else if (head->tableId == APPLICATION_TABLE) {
            if (const auto table = collector.Add(*head, section)) {
                take(*table);
            }
        }
    }
    // A short file may lack sections. A part of a table is more useful than none.
    for (const SubTable& table : collector.Incomplete()) {
        if (!table.sections.empty()) {
            ++broadcast.damage.incompleteTables;
            take(table);
        }
    }
    broadcast.snapshots = timeline.Finish();
    return broadcast;
}

}  // namespace applist::sim
