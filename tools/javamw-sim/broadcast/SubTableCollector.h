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

/// All sections of one version of a table with one id and extension, in their order.
struct SubTable {
    uint8_t tableId = 0;
    uint16_t extension = 0;
    bool replaces = false;  ///< Another version was complete before.
    std::vector<std::vector<uint8_t>> sections;
};

/// Puts the sub-tables of one PID together from sections that are repeated over and over: only a
/// version other than the one complete so far is news (EN 300 468, 5.2).
class SubTableCollector {
public:
    /// The sub-table that section completes, if it is news. section is the parsed head of bytes.
    /// One that is announced for later is passed over.
    std::optional<SubTable> Add(const TableSection& section, ByteSpan bytes);

    /// What came of the sub-tables of which no version was ever complete.
    std::vector<SubTable> Incomplete() const;

private:
    using Key = std::pair<uint8_t, uint16_t>;
    struct Collection {
        int complete = -1;    ///< The version complete so far.
        int collecting = -1;  ///< The version of the sections here.
        std::map<uint8_t, std::vector<uint8_t>> sections;
    };
    static SubTable Assemble(const Key& key, const Collection& collection);

    std::map<Key, Collection> m_collections;
};

}  // namespace applist::sim
