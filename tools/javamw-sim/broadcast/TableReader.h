// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <bitset>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "broadcast/ApplicationTable.h"
#include "broadcast/ByteReader.h"
#include "broadcast/Damage.h"
#include "broadcast/ProgramTables.h"

namespace applist::sim {

/// All sections of one version of a table with one id and extension, in order.
struct SubTable {
    uint8_t tableId = 0;
    uint16_t extension = 0;
    bool replaces = false;  ///< True if another version was complete before.
    std::vector<std::vector<uint8_t>> sections;
};

/// Joins all sections of a table of applications. A section of a different table counts as damage.
ApplicationTable JoinApplicationSections(const SubTable& table, TextCoding coding, Damage& damage);

/// Assembles the sub-tables of one PID from sections that are repeated. Reports a sub-table only if
/// its version differs from the last complete one (EN 300 468, 5.2).
///
/// A broadcast may not change a sub-table without a new version, and receivers do not see such a
/// change. But another stream may follow in the same pipe, with versions of its own. So a sub-table
/// with other bytes is reported once it is repeated without the former bytes in between.
class SubTableCollector {
public:
    /// Returns the sub-table that section completes, if it is new. section is the parsed header of
    /// bytes. Ignores a section that is not valid yet.
    std::optional<SubTable> Add(const TableSection& section, ByteSpan bytes);

    /// Returns the sub-tables of which no version was ever complete but some sections exist, and
    /// counts them as incomplete. A part of a table is more useful than none.
    std::vector<SubTable> TakeIncomplete(Damage& damage) const;

private:
    using Key = std::pair<uint8_t, uint16_t>;
    using Sections = std::map<uint8_t, std::vector<uint8_t>>;
    struct Collection {
        int complete = -1;    ///< The last complete version.
        int collecting = -1;  ///< The version of the collected sections.
        Sections sections;
        Sections lastComplete;
        Sections unconfirmed;  ///< Complete once under the version that is already known.
    };
    static SubTable Assemble(const Key& key, const Collection& collection);
    static bool IsRepetition(Collection& collection, const TableSection& section, ByteSpan bytes);
    static bool IsConfirmed(Collection& collection);

    std::map<Key, Collection> m_collections;
};

/// Reads the tables that lead to applications from a stream's packets: the Program Association
/// Table, the Service Description Table, Program Map Tables and Application Information Tables.
///
/// The last two are also read on PIDs that no table has named so far, because a short recording may
/// name a PID after the only table on it. Such a PID is known by the first byte of its sections.
class TableReader {
public:
    /// Called for each new sub-table.
    using Handler = std::function<void(uint16_t pid, const SubTable& table)>;

    /// damage must outlive the reader, which adds to it.
    TableReader(Handler handler, Damage& damage);
    ~TableReader();
    TableReader(const TableReader&) = delete;
    TableReader& operator=(const TableReader&) = delete;

    /// Reads the tables on pid from the next packet on.
    void Open(uint16_t pid);

    /// packet must be a whole transport packet of any PID.
    void Push(ByteSpan packet);

    /// Called at the end of the stream. Reports the parts of tables that never were complete.
    void Finish();

private:
    struct Pid;
    void OnSection(Pid& pid, ByteSpan section);

    Handler m_handler;
    Damage& m_damage;
    std::bitset<0x2000> m_open;  ///< The PIDs in m_pids, because most packets have others.
    std::map<uint16_t, std::unique_ptr<Pid>> m_pids;
};

}  // namespace applist::sim
