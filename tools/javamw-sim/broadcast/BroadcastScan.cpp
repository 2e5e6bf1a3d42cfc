// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "broadcast/BroadcastScan.h"

#include <algorithm>

#include "broadcast/PacketReader.h"
#include "broadcast/StreamClock.h"
#include "broadcast/TableReader.h"
#include "broadcast/Timeline.h"
#include "broadcast/TransportState.h"

namespace applist::sim {
namespace {

/// PIDs of all versions of the tables of a stream, and the first version of each table.
struct Places {
    TransportState first;
    std::set<uint16_t> maps;
    std::set<uint16_t> applications;
    bool isdb = false;
};

void ReadAll(ByteSpan stream, TableReader& tables) {
    Damage counted;
    PacketReader packets(stream, counted);
    while (const auto packet = packets.Next()) {
        tables.Push(*packet);
    }
    tables.Finish();
}

// In a short recording a table may precede the one that names its PID, so the PAT and the PMTs are
// read in separate passes. Damage is counted in the last pass, which reads everything.
void FindMaps(ByteSpan stream, Places& places, Damage& uncounted) {
    TableReader reader(
        [&](uint16_t, const SubTable& table) {
            TransportState version;
            version.TakeAssociation(table, uncounted);
            for (const ProgramReference& program : version.programs()) {
                places.maps.insert(program.pid);
            }
            // Only the first usable PAT is kept, because the last pass replays the later ones in
            // order.
            if (places.first.programs().empty()) {
                places.first = version;
            }
        },
        uncounted);
    reader.Want(ASSOCIATION_PID, ASSOCIATION_TABLE);
    ReadAll(stream, reader);
}

void FindApplications(ByteSpan stream, Places& places, Damage& uncounted) {
    TableReader reader(
        [&](uint16_t, const SubTable& table) {
            // A separate state shows the PIDs of this version alone.
            TransportState version;
            version.TakeMap(table, uncounted);
            for (const auto& [number, map] : version.maps()) {
                places.applications.insert(map.applicationPids.begin(), map.applicationPids.end());
                places.isdb = places.isdb || map.isdb;
            }
            // A map that replaces another takes effect only when the last pass reaches it.
            if (!table.replaces) {
                places.first.TakeMap(table, uncounted);
            }
        },
        uncounted);
    for (const uint16_t pid : places.maps) {
        reader.Want(pid, MAP_TABLE);
    }
    ReadAll(stream, reader);
}

/// The pass that reads everything in the order of the stream.
class Scan {
public:
    Scan(const Places& places, TextCoding coding, Damage& damage)
        : m_damage(damage),
          m_state(places.first),
          m_coding(coding),
          m_timeline([this] { return m_state.Services(); }, damage),
          m_tables([this](uint16_t pid, const SubTable& table) { OnTable(pid, table); }, damage) {
        m_tables.Want(ASSOCIATION_PID, ASSOCIATION_TABLE);
        m_tables.Want(DESCRIPTION_PID, DESCRIPTION_TABLE);
        for (const uint16_t pid : places.maps) {
            m_tables.Want(pid, MAP_TABLE);
        }
        for (const uint16_t pid : places.applications) {
            m_tables.Want(pid, APPLICATION_TABLE);
        }
    }

    void Push(ByteSpan packet) {
        // The clock goes first, so that a table in this packet gets the time of this packet.
        m_clock.Push(packet);
        m_tables.Push(packet);
    }

    std::vector<Snapshot> Finish() {
        m_tables.Finish();
        return m_timeline.Finish();
    }

    const TransportState& state() const { return m_state; }

private:
    // The name of a service does not change a list.
    void OnTable(uint16_t pid, const SubTable& table) {
        if (table.tableId == DESCRIPTION_TABLE) {
            m_state.TakeDescription(table, m_damage);
        } else {
            m_timeline.Change(table.replaces, m_clock.seconds(), [&] { Take(pid, table); });
        }
    }

    void Take(uint16_t pid, const SubTable& table) {
        switch (table.tableId) {
            case ASSOCIATION_TABLE:
                return m_state.TakeAssociation(table, m_damage);
            case MAP_TABLE:
                return m_state.TakeMap(table, m_damage);
            default:
                return m_state.TakeApplications(pid, table, m_coding, m_damage);
        }
    }

    Damage& m_damage;
    TransportState m_state;
    TextCoding m_coding;
    StreamClock m_clock;
    Timeline m_timeline;
    TableReader m_tables;
};

bool HasJapaneseNames(const Snapshot& snapshot) {
    const auto japanese = [](const ApplicationName& name) { return name.language == "jpn"; };
    for (const BroadcastService& service : snapshot.services) {
        for (const auto& table : service.tables) {
            for (const Application& application : table->applications) {
                if (std::any_of(application.names.begin(), application.names.end(), japanese)) {
                    return true;
                }
            }
        }
    }
    return false;
}

// The service table contains no language, so the language of the application names is used.
void NameServices(Broadcast& broadcast, const std::map<uint16_t, std::string>& names,
                  TextCoding coding) {
    const std::string language =
        std::any_of(broadcast.snapshots.begin(), broadcast.snapshots.end(), HasJapaneseNames)
            ? "jpn"
            : "";
    for (Snapshot& snapshot : broadcast.snapshots) {
        for (BroadcastService& service : snapshot.services) {
            if (const auto name = names.find(service.id.value_or(0)); name != names.end()) {
                const auto* bytes = reinterpret_cast<const uint8_t*>(name->second.data());
                service.name = DecodeText({bytes, name->second.size()},
                                          coding == TextCoding::Isdb ? language : "", coding)
                                   .value_or("");
            }
        }
    }
}

}  // namespace

Broadcast ScanBroadcast(ByteSpan stream, std::optional<TextCoding> coding) {
    // The last pass reads all packets again and counts the damage, so each error counts once.
    Damage uncounted;
    Places places;
    FindMaps(stream, places, uncounted);
    FindApplications(stream, places, uncounted);
    Broadcast broadcast;
    // The option of the caller has priority over the coding that the maps imply.
    const TextCoding texts = coding.value_or(places.isdb ? TextCoding::Isdb : TextCoding::Dvb);
    Scan scan(places, texts, broadcast.damage);
    PacketReader packets(stream, broadcast.damage);
    while (const auto packet = packets.Next()) {
        scan.Push(*packet);
    }
    broadcast.snapshots = scan.Finish();
    // Names are set at the end because a service description may follow the tables that need it.
    NameServices(broadcast, scan.state().names(), texts);
    return broadcast;
}

}  // namespace applist::sim
