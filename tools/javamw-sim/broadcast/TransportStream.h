// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "broadcast/Broadcast.h"
#include "broadcast/PacketReader.h"
#include "broadcast/ProgramTables.h"
#include "broadcast/TableReader.h"
#include "broadcast/Text.h"

namespace applist::sim {

/// Joins all sections of a table of applications. A section of a different table counts as damage.
ApplicationTable JoinApplicationSections(const SubTable& table, TextCoding coding, Damage& damage);

/// Parses a transport stream with packets of any size (PacketReader.h): the Program Association
/// Table, the Program Map Tables that it names, and the Application Information Tables that those
/// name. Damaged parts are skipped and counted; so is a section that is a different table.
class TransportStream : public BroadcastParser {
public:
    /// Without a coding, texts are decoded as DVB text, unless a map describes its data services as
    /// ISDB does. damage must outlive the parser, which adds to it.
    TransportStream(std::optional<TextCoding> coding, SnapshotHandler handler, Damage& damage);

    size_t Parse(ByteSpan bytes, bool last) override;

private:
    /// PID, and table id extension or program number.
    using Key = std::pair<uint16_t, uint16_t>;
    struct Decoded {
        SubTable sent;  ///< Kept because the coding may be known later.
        std::shared_ptr<const ApplicationTable> table;
    };

    void OnTable(uint16_t pid, const SubTable& table);
    void TakeAssociation(const SubTable& table);
    void TakeMap(uint16_t pid, const SubTable& table);
    void TakeDescription(const SubTable& table);
    void DetectIsdb(const ProgramMap& map);
    /// The services with their names and tables in the order of the stream.
    std::vector<BroadcastService> Services() const;
    void AddTables(const ProgramReference& program, BroadcastService& service) const;
    void NameServices(std::vector<BroadcastService>& services) const;
    TextCoding Coding() const {
        return m_coding.value_or(m_isdb ? TextCoding::Isdb : TextCoding::Dvb);
    }

    std::optional<TextCoding> m_coding;
    SnapshotHandler m_handler;
    Damage& m_damage;
    bool m_isdb = false;
    std::vector<ProgramReference> m_programs;
    std::map<Key, ProgramMap> m_maps;
    std::map<uint16_t, std::string> m_names;  ///< By service, in the coding of the stream.
    std::map<Key, Decoded> m_applications;
    StreamClock m_clock;
    TableReader m_tables;
    PacketReader m_packets;
};

}  // namespace applist::sim
