// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "broadcast/ByteReader.h"
#include "broadcast/ProgramTables.h"

namespace applist::sim {

/// All sections of one version of a table with one id and extension, in order.
struct SubTable {
    uint8_t tableId = 0;
    uint16_t extension = 0;
    bool replaces = false;  ///< True if another version was complete before.
    std::vector<std::vector<uint8_t>> sections;
};

/// Assembles the sub-tables of one PID from sections that are repeated. Reports a sub-table only if
/// its version differs from the last complete one (EN 300 468, 5.2).
class SubTableCollector {
public:
    /// Returns the sub-table that section completes, if it is new. section is the parsed header of
    /// bytes. Ignores a section that is not valid yet.
    std::optional<SubTable> Add(const TableSection& section, ByteSpan bytes);

    /// Returns the incomplete sub-tables of which no version was ever complete.
    std::vector<SubTable> Incomplete() const;

private:
    using Key = std::pair<uint8_t, uint16_t>;
    struct Collection {
        int complete = -1;    ///< The last complete version.
        int collecting = -1;  ///< The version of the collected sections.
        std::map<uint8_t, std::vector<uint8_t>> sections;
    };
    static SubTable Assemble(const Key& key, const Collection& collection);

    std::map<Key, Collection> m_collections;
};

}  // namespace applist::sim
