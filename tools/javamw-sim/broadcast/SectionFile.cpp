// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <map>
#include <memory>
#include <utility>

#include <dvbpsi/dvbpsi.h>
// The headers of the library must be included in this order.
#include <dvbpsi/psi.h>

#include "broadcast/BroadcastParser.h"
#include "broadcast/TableReader.h"

namespace applist::sim {
namespace {

constexpr size_t HEADER_SIZE = 3;
constexpr uint8_t LONG_FORM = 0x80;
constexpr size_t CRC_SIZE = 4;
// ISO/IEC 13818-1 fills unused bytes with 0xFF, which is never a table id.
constexpr uint8_t STUFFING = 0xFF;

// Returns the size of the section that begins here.
size_t SectionSize(ByteSpan bytes) {
    ByteReader reader(bytes);
    reader.U8();  // the table id
    return HEADER_SIZE + (reader.U16() & 0x0FFFU);
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

Found BeginsComplete(ByteSpan bytes, bool last) {
    if (!bytes.empty() && bytes[0] == STUFFING) {
        return Found::No;
    }
    if (bytes.size() < HEADER_SIZE || bytes.size() < SectionSize(bytes)) {
        return last ? Found::No : Found::Unknown;
    }
    return Found::Yes;
}

}  // namespace

Found BeginsWithSection(ByteSpan bytes, bool last) {
    const Found complete = BeginsComplete(bytes, last);
    if (complete != Found::Yes) {
        return complete;
    }
    const ByteSpan section = bytes.first(SectionSize(bytes));
    return HasCrc(section) && CrcIsRight(section) ? Found::Yes : Found::No;
}

namespace {

class SectionFile : public BroadcastParser {
public:
    SectionFile(TextCoding coding, SnapshotHandler handler, Damage& damage)
        : m_coding(coding), m_handler(std::move(handler)), m_damage(damage) {}

    size_t Parse(ByteSpan bytes, bool last) override {
        size_t used = 0;
        // Every step uses some bytes unless it needs more of them.
        for (size_t step = 1; step > 0 && used < bytes.size(); used += step) {
            step =
                m_searching ? Search(bytes.subspan(used), last) : Next(bytes.subspan(used), last);
            m_offset += step;
        }
        if (last) {
            for (const SubTable& table : m_collector.TakeIncomplete(m_damage)) {
                OnTable(table);
            }
        }
        return used;
    }

private:
    // Returns how many bytes are dealt with.
    size_t Next(ByteSpan bytes, bool last) {
        const Found complete = BeginsComplete(bytes, last);
        if (complete == Found::Unknown) {
            return 0;
        }
        if (complete == Found::No) {
            return Lose(&Damage::malformedSections);
        }
        const ByteSpan section = bytes.first(SectionSize(bytes));
        if (HasCrc(section) && !CrcIsRight(section)) {
            return SkipDamaged(bytes, section.size(), last);
        }
        // A section without a CRC is another kind of table.
        if (HasCrc(section)) {
            OnSection(section);
        }
        return section.size();
    }

    // If the length was correct, the next section follows. Otherwise its position is unknown.
    size_t SkipDamaged(ByteSpan bytes, size_t size, bool last) {
        const ByteSpan behind = bytes.subspan(size);
        const Found next = behind.empty() && last ? Found::Yes : BeginsWithSection(behind, last);
        if (next == Found::Unknown) {
            return 0;
        }
        const size_t lost = Lose(&Damage::wrongChecksums);
        m_searching = next == Found::No;
        return m_searching ? lost : size;
    }

    // Requires a valid CRC as well, because the table id alone is frequent in data.
    size_t Search(ByteSpan bytes, bool last) {
        const Found found =
            bytes[0] == APPLICATION_TABLE ? BeginsWithSection(bytes, last) : Found::No;
        m_searching = found != Found::Yes;
        // The section that was found is read next.
        return found == Found::Yes ? Next(bytes, last) : found == Found::No ? 1 : 0;
    }

    // Counts the byte that does not begin a section, and looks for the next that does.
    size_t Lose(size_t Damage::*counter) {
        m_damage.At(m_offset);
        m_damage.Add(counter);
        m_searching = true;
        return 1;
    }

    void OnSection(ByteSpan section) {
        const auto head = ParseTableSection(section);
        m_damage.At(m_offset);
        if (!head) {
            m_damage.Add(&Damage::malformedSections);
        } else if (head->tableId == APPLICATION_TABLE) {
            if (const auto table = m_collector.Add(*head, section)) {
                OnTable(*table);
            }
        }
    }

    void OnTable(const SubTable& table) {
        m_tables[table.extension] = std::make_shared<const ApplicationTable>(
            JoinApplicationSections(table, m_coding, m_damage));
        BroadcastService service;
        for (const auto& [type, applications] : m_tables) {
            service.tables.push_back(applications);
        }
        // A file of sections does not contain a clock.
        m_handler({std::nullopt, {std::move(service)}}, table.replaces);
    }

    TextCoding m_coding;
    SnapshotHandler m_handler;
    Damage& m_damage;
    SubTableCollector m_collector;
    std::map<uint16_t, std::shared_ptr<const ApplicationTable>> m_tables;  ///< By type.
    uint64_t m_offset = 0;                                                 ///< Of the next byte.
    bool m_searching = false;
};

}  // namespace

std::unique_ptr<BroadcastParser> MakeSectionParser(TextCoding coding, SnapshotHandler handler,
                                                   Damage& damage) {
    return std::make_unique<SectionFile>(coding, std::move(handler), damage);
}

}  // namespace applist::sim
