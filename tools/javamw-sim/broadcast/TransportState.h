// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "broadcast/Broadcast.h"
#include "broadcast/ProgramTables.h"
#include "broadcast/SubTableCollector.h"

namespace applist::sim {

/// One table of applications from all its sections; those that are none count as damage.
ApplicationTable JoinApplicationSections(const SubTable& table, TextCoding coding, Damage& damage);

/// What the tables of a transport stream say, taken one after the other.
class TransportState {
public:
    // Each counts as damage what is no such table after all.
    void TakeAssociation(const SubTable& table, Damage& damage);
    void TakeMap(const SubTable& table, Damage& damage);
    void TakeDescription(const SubTable& table, Damage& damage);
    void TakeApplications(uint16_t pid, const SubTable& table, TextCoding coding, Damage& damage);

    const std::vector<ProgramReference>& programs() const { return m_programs; }
    const std::map<uint16_t, ProgramMap>& maps() const { return m_maps; }

    /// The services in the order in which the stream names them, with their tables; without names.
    std::vector<BroadcastService> Services() const;

    /// Names in the stream's own coding, by service.
    const std::map<uint16_t, std::string>& names() const { return m_names; }

private:
    using TableKey = std::pair<uint16_t, uint16_t>;  ///< PID and table id extension.

    std::vector<ProgramReference> m_programs;
    std::map<uint16_t, ProgramMap> m_maps;
    std::map<uint16_t, std::string> m_names;
    std::map<TableKey, std::shared_ptr<const ApplicationTable>> m_tables;
};

}  // namespace applist::sim
