// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <set>

#include "broadcast/Damage.h"
#include "broadcast/SectionAssembler.h"
#include "broadcast/SubTableCollector.h"

namespace applist::sim {

/// Reads the tables of several PIDs from a stream's packets.
class TableReader {
public:
    /// Called for each new sub-table.
    using Handler = std::function<void(uint16_t pid, const SubTable& table)>;

    /// damage must outlive the reader, which adds to it.
    TableReader(Handler handler, Damage& damage);

    /// Starts reading the tables with tableId on pid. Other tables on that PID are ignored.
    void Want(uint16_t pid, uint8_t tableId);

    /// packet must be a whole transport packet of any PID.
    void Push(ByteSpan packet);

    /// Called at the end of the stream. Reports the parts of tables that never were complete.
    void Finish();

private:
    struct Pid {
        std::set<uint8_t> tableIds;
        SubTableCollector collector;
        std::unique_ptr<SectionAssembler> assembler;
    };
    void OnSection(uint16_t number, ByteSpan section);

    Handler m_handler;
    Damage& m_damage;
    std::map<uint16_t, Pid> m_pids;
};

}  // namespace applist::sim
