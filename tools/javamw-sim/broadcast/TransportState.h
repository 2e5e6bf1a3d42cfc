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

/// Joins all sections of a table of applications. A section of a different table counts as damage.
ApplicationTable JoinApplicationSections(const SubTable& table, TextCoding coding, Damage& damage);

/// The state that results from the tables of a transport stream, taken in order.
class TransportState {
public:
    // A section that is a different table counts as damage.
    void TakeAssociation(const SubTable& table, Damage& damage);
    void TakeMap(const SubTable& table, Damage& damage);
    void TakeDescription(const SubTable& table, Damage& damage);
    void TakeApplications(uint16_t pid, const SubTable& table, TextCoding coding, Damage& damage);

    const std::vector<ProgramReference>& programs() const { return m_programs; }
    const std::map<uint16_t, ProgramMap>& maps() const { return m_maps; }

    /// Returns the services with their tables, without names, in the order of the stream.
    std::vector<BroadcastService> Services() const;

    /// Names by service, in the coding of the stream.
    const std::map<uint16_t, std::string>& names() const { return m_names; }

private:
    using TableKey = std::pair<uint16_t, uint16_t>;  ///< PID and table id extension.

    std::vector<ProgramReference> m_programs;
    std::map<uint16_t, ProgramMap> m_maps;
    std::map<uint16_t, std::string> m_names;
    std::map<TableKey, std::shared_ptr<const ApplicationTable>> m_tables;
};

}  // namespace applist::sim
