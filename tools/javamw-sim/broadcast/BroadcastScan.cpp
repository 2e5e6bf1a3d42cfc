// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "broadcast/BroadcastScan.h"

#include <map>
#include <set>
#include <utility>

#include "broadcast/PacketReader.h"
#include "broadcast/ProgramTables.h"
#include "broadcast/SectionAssembler.h"

namespace applist::sim {
namespace {

using Section = std::vector<uint8_t>;

/// The sections of the tables with one table id on one PID, each table in its last version.
class TableStore {
public:
    explicit TableStore(uint8_t tableId) : m_tableId(tableId) {}

    /// False when the section is in no long form; another table's section is fine and ignored.
    bool Add(ByteSpan section) {
        if (section.empty() || section[0] != m_tableId) {
            return true;
        }
        const auto table = ParseTableSection(section);
        if (!table) {
            return false;
        }
        if (table->current) {
            Version& kept = m_tables[table->extension];
            if (kept.number != table->version) {
                kept = {table->version, {}};
            }
            kept.sections[table->number] = Section(section.begin(), section.end());
        }
        return true;
    }

    template <typename Visitor>
    void ForEach(Visitor&& visit) const {
        for (const auto& [extension, version] : m_tables) {
            for (const auto& [number, section] : version.sections) {
                visit(section);
            }
        }
    }

private:
    struct Version {
        int number = -1;
        std::map<uint8_t, Section> sections;
    };
    uint8_t m_tableId;
    std::map<uint16_t, Version> m_tables;
};

/// One PID on the way through the stream.
struct PidScan {
    explicit PidScan(uint8_t tableId)
        : store(tableId),
          assembler([this](ByteSpan section) { malformed += store.Add(section) ? 0 : 1; }) {}

    TableStore store;
    size_t malformed = 0;
    SectionAssembler assembler;
};

using Pids = std::map<uint16_t, PidScan>;

// A later table's PIDs are known only after the earlier table, which may come behind it in a short
// recording: each kind of table gets a pass of its own.
void CollectTables(ByteSpan stream, Pids& pids, Broadcast& broadcast) {
    PacketReader reader(stream);
    while (const auto packet = reader.Next()) {
        const auto wanted = pids.find(PacketPid(*packet));
        if (wanted != pids.end()) {
            wanted->second.assembler.Push(*packet);
        }
    }
    broadcast.damagedPackets = reader.damaged();
    for (const auto& [pid, scan] : pids) {
        broadcast.damagedSections += scan.assembler.damaged() + scan.malformed;
    }
}

void AddPid(Pids& pids, uint16_t pid, uint8_t tableId) {
    pids.try_emplace(pid, tableId);
}

std::vector<ProgramReference> ReadPrograms(ByteSpan stream, Broadcast& broadcast) {
    Pids pids;
    AddPid(pids, 0, 0x00);
    CollectTables(stream, pids, broadcast);
    std::vector<ProgramReference> programs;
    pids.at(0).store.ForEach([&](const Section& section) {
        if (const auto part = ParseProgramAssociation(section)) {
            programs.insert(programs.end(), part->begin(), part->end());
        } else {
            ++broadcast.damagedSections;
        }
    });
    return programs;
}

using ApplicationPids = std::map<uint16_t, std::vector<uint16_t>>;

ApplicationPids ReadMaps(ByteSpan stream, const std::vector<ProgramReference>& programs,
                         Broadcast& broadcast) {
    Pids pids;
    for (const ProgramReference& program : programs) {
        AddPid(pids, program.pid, 0x02);
    }
    CollectTables(stream, pids, broadcast);
    ApplicationPids applicationPids;
    for (const auto& [pid, scan] : pids) {
        scan.store.ForEach([&](const Section& section) {
            if (const auto map = ParseProgramMap(section)) {
                applicationPids[map->number] = map->applicationPids;
            } else {
                ++broadcast.damagedSections;
            }
        });
    }
    return applicationPids;
}

using TablesByPid = std::map<uint16_t, std::vector<ApplicationTable>>;

TablesByPid ReadApplications(ByteSpan stream, const ApplicationPids& applicationPids,
                             Broadcast& broadcast) {
    Pids pids;
    for (const auto& [program, named] : applicationPids) {
        for (const uint16_t pid : named) {
            AddPid(pids, pid, APPLICATION_TABLE);
        }
    }
    CollectTables(stream, pids, broadcast);
    TablesByPid tables;
    for (const auto& [pid, scan] : pids) {
        std::vector<ApplicationTable>& ofPid = tables[pid];
        scan.store.ForEach([&](const Section& section) {
            if (auto table = ParseApplicationTable(section)) {
                ofPid.push_back(std::move(*table));
            } else {
                ++broadcast.damagedSections;
            }
        });
    }
    return tables;
}

std::string VisibleName(const Application& application) {
    for (const ApplicationName& name : application.names) {
        if (!name.text.empty()) {
            return name.text;
        }
    }
    return UniqueId(application);
}

}  // namespace

Broadcast ScanBroadcast(ByteSpan stream) {
    Broadcast broadcast;
    const auto programs = ReadPrograms(stream, broadcast);
    const auto applicationPids = ReadMaps(stream, programs, broadcast);
    const auto tables = ReadApplications(stream, applicationPids, broadcast);
    for (const ProgramReference& program : programs) {
        BroadcastService& service = broadcast.services.emplace_back();
        service.program = program.number;
        const auto named = applicationPids.find(program.number);
        if (named == applicationPids.end()) {
            continue;
        }
        for (const uint16_t pid : named->second) {
            if (const auto found = tables.find(pid); found != tables.end()) {
                service.tables.insert(service.tables.end(), found->second.begin(),
                                      found->second.end());
            }
        }
    }
    return broadcast;
}

Items OfferedItems(const Broadcast& broadcast) {
    Items items;
    std::set<std::string> seen;
    for (const BroadcastService& service : broadcast.services) {
        for (const ApplicationTable& table : service.tables) {
            for (const Application& application : table.applications) {
                std::string id = UniqueId(application);
                if (IsOffered(table, application) && seen.insert(id).second) {
                    items.push_back({std::move(id), VisibleName(application)});
                }
            }
        }
    }
    return items;
}

}  // namespace applist::sim
