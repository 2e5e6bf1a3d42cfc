// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "broadcast/SubTableCollector.h"

namespace applist::sim {

std::optional<SubTable> SubTableCollector::Add(const TableSection& section, ByteSpan bytes) {
    // A section that is not current announces a version that does not apply yet.
    if (!section.current) {
        return std::nullopt;
    }
    const Key key(section.tableId, section.extension);
    Collection& collection = m_collections[key];
    // Broadcasts repeat every table continuously. A repetition contains nothing new.
    if (section.version == collection.complete) {
        return std::nullopt;
    }
    // Sections of different versions must not be mixed in one table.
    if (section.version != collection.collecting) {
        collection.collecting = section.version;
        collection.sections.clear();
    }
    collection.sections[section.number].assign(bytes.begin(), bytes.end());
    if (collection.sections.size() <= section.lastNumber) {
        return std::nullopt;
    }
    SubTable table = Assemble(key, collection);
    collection.complete = section.version;
    collection.collecting = -1;
    collection.sections.clear();
    return table;
}

std::vector<SubTable> SubTableCollector::Incomplete() const {
    std::vector<SubTable> tables;
    for (const auto& [key, collection] : m_collections) {
        // An incomplete update is left out, because a complete earlier version was delivered.
        if (collection.complete < 0) {
            tables.push_back(Assemble(key, collection));
        }
    }
    return tables;
}

SubTable SubTableCollector::Assemble(const Key& key, const Collection& collection) {
    SubTable table{key.first, key.second, collection.complete >= 0, {}};
    for (const auto& [number, section] : collection.sections) {
        table.sections.push_back(section);
    }
    return table;
}

}  // namespace applist::sim
