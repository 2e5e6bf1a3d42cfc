// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <limits>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "broadcast/BroadcastParser.h"
#include "broadcast/PacketReader.h"
#include "broadcast/ProgramTables.h"
#include "broadcast/TableReader.h"

namespace applist::sim {
namespace {

// Far more than any real multiplex; beyond it the stream is assumed to be hostile.
constexpr size_t MAX_SERVICES = 1000;

bool HasJapaneseNames(const BroadcastService& service) {
    bool japanese = false;
    ForEachApplication({service}, [&](const auto&, const auto&, const Application& application) {
        const auto& names = application.names;
        japanese =
            japanese || std::ranges::find(names, "jpn", &ApplicationName::language) != names.end();
    });
    return japanese;
}

class TransportStream : public BroadcastParser {
public:
    TransportStream(std::optional<TextCoding> coding, SnapshotHandler handler, Damage& damage)
        : m_coding(coding),
          m_handler(std::move(handler)),
          m_damage(damage),
          m_tables([this](uint16_t pid, const SubTable& table) { OnTable(pid, table); }, damage),
          m_packets(
              [this](ByteSpan packet) {
                  // The clock goes first, so that a table in this packet gets the time of this
                  // packet.
                  m_clock.Push(packet);
                  m_tables.Push(packet);
              },
              damage) {}

    size_t Parse(ByteSpan bytes, bool last) override {
        const size_t used = m_packets.Read(bytes, last);
        if (last) {
            m_tables.Finish();
        }
        return used;
    }

private:
    /// PID, and table id extension or program number.
    using Key = std::pair<uint16_t, uint16_t>;
    struct Decoded {
        SubTable sent;  ///< Kept because the coding may be known later.
        std::shared_ptr<const ApplicationTable> table;
    };

    void OnTable(uint16_t pid, const SubTable& table) {
        switch (table.tableId) {
            case ASSOCIATION_TABLE:
                TakeAssociation(table);
                break;
            case MAP_TABLE:
                TakeMap(pid, table);
                break;
            case DESCRIPTION_TABLE:
                TakeDescription(table);
                break;
            default:
                m_applications[{pid, table.extension}] = {
                    table, std::make_shared<const ApplicationTable>(
                               JoinApplicationSections(table, Coding(), m_damage))};
        }
        // A new name of a service changes no list.
        m_handler({m_clock.seconds(), Services()},
                  table.replaces && table.tableId != DESCRIPTION_TABLE);
    }

    void TakeAssociation(const SubTable& table) {
        // A PAT lists all programs, so a program that it does not name has ended.
        m_programs.clear();
        for (const auto& section : table.sections) {
            const auto part = ParseProgramAssociation(section);
            if (part && m_programs.size() + part->size() <= MAX_SERVICES) {
                m_programs.insert(m_programs.end(), part->begin(), part->end());
                for (const ProgramReference& program : *part) {
                    m_tables.Open(program.pid);
                }
            } else {
                m_damage.Add(&Damage::malformedSections);
            }
        }
    }

    void TakeMap(uint16_t pid, const SubTable& table) {
        for (const auto& section : table.sections) {
            if (auto map = ParseProgramMap(section)) {
                DetectIsdb(*map);
                for (const uint16_t named : map->applicationPids) {
                    m_tables.Open(named);
                }
                m_maps[{pid, map->number}] = std::move(*map);
            } else {
                m_damage.Add(&Damage::malformedSections);
            }
        }
    }

    void TakeDescription(const SubTable& table) {
        for (const auto& section : table.sections) {
            const auto names = ParseServiceDescription(section);
            if (!names) {
                m_damage.Add(&Damage::malformedSections);
                continue;
            }
            for (const ServiceName& name : *names) {
                m_names[name.service].assign(name.text.begin(), name.text.end());
            }
        }
    }

    // A short recording may contain a table before the map that implies the coding of its texts.
    void DetectIsdb(const ProgramMap& map) {
        if (!map.isdb || m_isdb) {
            return;
        }
        m_isdb = true;
        for (auto& [key, decoded] : m_applications) {
            Damage counted;
            decoded.table = std::make_shared<const ApplicationTable>(
                JoinApplicationSections(decoded.sent, Coding(), counted));
        }
    }

    /// The services with their names and tables in the order of the stream.
    std::vector<BroadcastService> Services() const {
        std::vector<BroadcastService> services;
        for (const ProgramReference& program : m_programs) {
            BroadcastService& service = services.emplace_back();
            service.id = program.number;
            AddTables(program, service);
        }
        NameServices(services);
        return services;
    }

    void AddTables(const ProgramReference& program, BroadcastService& service) const {
        const auto map = m_maps.find({program.pid, program.number});
        // A service without a map is listed too, without tables.
        if (map == m_maps.end()) {
            return;
        }
        for (const uint16_t pid : map->second.applicationPids) {
            // One PID may carry a table for each type, so the range covers every extension of the
            // PID.
            const auto end =
                m_applications.upper_bound({pid, std::numeric_limits<uint16_t>::max()});
            for (auto table = m_applications.lower_bound({pid, 0}); table != end; ++table) {
                service.tables.push_back(table->second.table);
            }
        }
    }

    // The service table contains no language, so the language of the application names is used.
    void NameServices(std::vector<BroadcastService>& services) const {
        const bool japanese = std::ranges::any_of(services, HasJapaneseNames);
        for (BroadcastService& service : services) {
            if (const auto name = m_names.find(service.id.value_or(0)); name != m_names.end()) {
                service.name =
                    DecodeText(name->second, japanese && Coding() == TextCoding::Isdb ? "jpn" : "",
                               Coding())
                        .value_or("");
            }
        }
    }

    TextCoding Coding() const {
        return m_coding.value_or(m_isdb ? TextCoding::Isdb : TextCoding::Dvb);
    }

    std::optional<TextCoding> m_coding;
    SnapshotHandler m_handler;
    Damage& m_damage;
    bool m_isdb = false;
    std::vector<ProgramReference> m_programs;
    std::map<Key, ProgramMap> m_maps;
    /// By service, in the coding of the stream.
    std::map<uint16_t, std::vector<uint8_t>> m_names;
    std::map<Key, Decoded> m_applications;
    StreamClock m_clock;
    TableReader m_tables;
    PacketReader m_packets;
};

}  // namespace

std::unique_ptr<BroadcastParser> MakeStreamParser(std::optional<TextCoding> coding,
                                                  SnapshotHandler handler, Damage& damage) {
    return std::make_unique<TransportStream>(coding, std::move(handler), damage);
}

}  // namespace applist::sim
