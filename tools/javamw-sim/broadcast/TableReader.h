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
    /// Told of each sub-table that is news.
    using Handler = std::function<void(uint16_t pid, const SubTable& table)>;

    /// damage must outlive the reader, which adds to it.
    TableReader(Handler handler, Damage& damage);

    /// Tables with tableId on pid are to be read, from now on; others there are passed over.
    void Want(uint16_t pid, uint8_t tableId);

    /// packet is a whole transport packet of any PID.
    void Push(ByteSpan packet);

    /// At the end of the stream: hands out what came of tables that never were complete.
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
