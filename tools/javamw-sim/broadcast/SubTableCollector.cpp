// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "broadcast/SubTableCollector.h"

namespace applist::sim {

std::optional<SubTable> SubTableCollector::Add(const TableSection& section, ByteSpan bytes) {
    if (!section.current) {
        return std::nullopt;
    }
    const Key key(section.tableId, section.extension);
    Collection& collection = m_collections[key];
    if (section.version == collection.complete) {
        return std::nullopt;
    }
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
