// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <optional>
#include <string>

#include "broadcast/BroadcastParser.h"
#include "broadcast/BroadcastReader.h"

namespace applist::test {

/// Parses bytes with a parser, in pieces of size bytes, as if they arrived one after the other.
inline void ParseInPieces(sim::BroadcastParser& parser, sim::ByteSpan bytes, size_t size) {
    size_t begin = 0;
    for (size_t end = 0; end < bytes.size();) {
        end = std::min(end + size, bytes.size());
        begin += parser.Parse(bytes.subspan(begin, end - begin), false);
    }
    parser.Parse(bytes.subspan(begin), true);
}

/// Returns what bytes contain for the parser that make(handler, damage) returns.
template <typename Make>
sim::Broadcast Scan(sim::ByteSpan bytes, size_t piece, Make make) {
    sim::Timeline timeline;
    sim::Damage damage;
    const auto parser = make([&](sim::Snapshot snapshot,
                                 bool replaces) { timeline.Change(std::move(snapshot), replaces); },
                             damage);
    ParseInPieces(*parser, bytes, piece);
    return timeline.Finish(damage);
}

/// Returns what a transport stream contains. The result must not depend on the size of the pieces.
inline sim::Broadcast ScanBroadcast(sim::ByteSpan stream,
                                    std::optional<sim::TextCoding> coding = std::nullopt,
                                    size_t piece = 1000000) {
    return Scan(stream, piece, [coding](sim::SnapshotHandler handler, sim::Damage& damage) {
        return sim::MakeStreamParser(coding, std::move(handler), damage);
    });
}

/// Returns what consecutive sections contain.
inline sim::Broadcast ScanSections(sim::ByteSpan file, size_t piece = 1000000) {
    return Scan(file, piece, [](sim::SnapshotHandler handler, sim::Damage& damage) {
        return sim::MakeSectionParser(sim::TextCoding::Dvb, std::move(handler), damage);
    });
}

/// Returns everything that differs between two broadcasts, for comparisons.
inline std::string TextOf(const sim::Broadcast& broadcast) {
    std::string text = sim::DamageRemark("damage", broadcast.damage) + '\n';
    for (const sim::Snapshot& snapshot : broadcast.snapshots) {
        text += "at " + (snapshot.seconds ? std::to_string(*snapshot.seconds) : "?") + '\n';
        for (const sim::BroadcastService& service : snapshot.services) {
            text += std::to_string(service.id.value_or(0)) + ' ' + service.name + '\n';
            for (const auto& table : service.tables) {
                text += " type " + std::to_string(table->type) + '\n';
                for (const sim::Application& application : table->applications) {
                    text += "  " + sim::UniqueId(application) + ' ' + application.location;
                    for (const sim::ApplicationName& name : application.names) {
                        text += ' ' + name.language + '=' + name.text;
                    }
                    text += '\n';
                }
            }
        }
    }
    return text;
}

}  // namespace applist::test
