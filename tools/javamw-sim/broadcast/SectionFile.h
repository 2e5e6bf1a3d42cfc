// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <memory>

#include "broadcast/Broadcast.h"
#include "broadcast/ByteReader.h"
#include "broadcast/TableReader.h"
#include "broadcast/Text.h"

namespace applist::sim {

/// Whether a section was found; Unknown if more bytes are needed to decide.
enum class Found { No, Yes, Unknown };

/// Says whether bytes begin with a whole section whose CRC is correct. With last, nothing follows
/// them, and the answer is never Unknown.
Found BeginsWithSection(ByteSpan bytes, bool last);

/// Parses consecutive sections, as section filters write them to files. All Application Information
/// Tables belong to one service without a number. Damaged parts are skipped and counted.
class SectionFile : public BroadcastParser {
public:
    /// damage must outlive the parser, which adds to it.
    SectionFile(TextCoding coding, SnapshotHandler handler, Damage& damage);

    size_t Parse(ByteSpan bytes, bool last) override;

private:
    size_t Next(ByteSpan bytes, bool last);
    size_t SkipDamaged(ByteSpan bytes, size_t size, bool last);
    size_t Search(ByteSpan bytes, bool last);
    size_t Lose(size_t Damage::*counter);
    void OnSection(ByteSpan section);
    void OnTable(const SubTable& table);

    TextCoding m_coding;
    SnapshotHandler m_handler;
    Damage& m_damage;
    SubTableCollector m_collector;
    std::map<uint16_t, std::shared_ptr<const ApplicationTable>> m_tables;  ///< By type.
    uint64_t m_offset = 0;                                                 ///< Of the next byte.
    bool m_searching = false;
};

}  // namespace applist::sim
