// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "broadcast/TableReader.h"

#include <utility>

#include "broadcast/PacketReader.h"

namespace applist::sim {

TableReader::TableReader(Handler handler, Damage& damage)
    : m_handler(std::move(handler)), m_damage(damage) {}

void TableReader::Want(uint16_t pid, uint8_t tableId) {
    Pid& wanted = m_pids[pid];
    wanted.tableIds.insert(tableId);
    // One PID may carry several tables, which share one assembler.
    if (!wanted.assembler) {
        wanted.assembler = std::make_unique<SectionAssembler>(
            [this, pid](ByteSpan section) { OnSection(pid, section); }, m_damage);
    }
}

void TableReader::Push(ByteSpan packet) {
    const auto wanted = m_pids.find(PacketPid(packet));
    // Most packets carry video and audio, which are not wanted.
    if (wanted != m_pids.end()) {
        wanted->second.assembler->Push(packet);
    }
}

void TableReader::OnSection(uint16_t number, ByteSpan section) {
    Pid& pid = m_pids.at(number);
    // A PID may carry other tables too, which are not damage.
    if (section.empty() || pid.tableIds.count(section[0]) == 0) {
        return;
    }
    const auto head = ParseTableSection(section);
    if (!head) {
        ++m_damage.malformedSections;
        return;
    }
    if (const auto table = pid.collector.Add(*head, section)) {
        m_handler(number, *table);
    }
}

void TableReader::Finish() {
    for (const auto& [number, pid] : m_pids) {
        // A short recording may lack sections. A part of a table is more useful than none.
        for (const SubTable& table : pid.collector.Incomplete()) {
            if (!table.sections.empty()) {
                ++m_damage.incompleteTables;
                m_handler(number, table);
            }
        }
    }
}

}  // namespace applist::sim
