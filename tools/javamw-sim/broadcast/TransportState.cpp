// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "broadcast/TransportState.h"

#include <limits>

namespace applist::sim {
namespace {

// Far more than any real multiplex; beyond it the stream is assumed to be hostile.
constexpr size_t MAX_SERVICES = 1000;

}  // namespace

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
            ++damage.malformedSections;
        }
    }
    return joined;
}

void TransportState::TakeAssociation(const SubTable& table, Damage& damage) {
    // A PAT lists all programs, so a program that it does not name has ended.
    m_programs.clear();
    for (const auto& section : table.sections) {
        const auto part = ParseProgramAssociation(section);
        if (part && m_programs.size() + part->size() <= MAX_SERVICES) {
            m_programs.insert(m_programs.end(), part->begin(), part->end());
        } else {
            ++damage.malformedSections;
        }
    }
}

void TransportState::TakeMap(const SubTable& table, Damage& damage) {
    for (const auto& section : table.sections) {
        if (auto map = ParseProgramMap(section)) {
            m_maps[map->number] = std::move(*map);
        } else {
            ++damage.malformedSections;
        }
    }
}

void TransportState::TakeDescription(const SubTable& table, Damage& damage) {
    for (const auto& section : table.sections) {
        const auto names = ParseServiceDescription(section);
        if (!names) {
            ++damage.malformedSections;
            continue;
        }
        for (const ServiceName& name : *names) {
            m_names[name.service] = {name.text.begin(), name.text.end()};
        }
    }
}

void TransportState::TakeApplications(uint16_t pid, const SubTable& table, TextCoding coding,
                                      Damage& damage) {
    m_tables[{pid, table.extension}] =
        std::make_shared<const ApplicationTable>(JoinApplicationSections(table, coding, damage));
}

std::vector<BroadcastService> TransportState::Services() const {
    std::vector<BroadcastService> services;
    for (const ProgramReference& program : m_programs) {
        BroadcastService& service = services.emplace_back();
        service.id = program.number;
        const auto map = m_maps.find(program.number);
        // A service without a map is listed too, without tables.
        if (map == m_maps.end()) {
            continue;
        }
        for (const uint16_t pid : map->second.applicationPids) {
            // One PID may carry a table for each type, so the range covers every extension of the
            // PID.
            const auto end = m_tables.upper_bound({pid, std::numeric_limits<uint16_t>::max()});
            for (auto table = m_tables.lower_bound({pid, 0}); table != end; ++table) {
                service.tables.push_back(table->second);
            }
        }
    }
    return services;
}

}  // namespace applist::sim
