// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "Result.h"
#include "broadcast/Broadcast.h"
#include "broadcast/BroadcastParser.h"
#include "broadcast/Text.h"

namespace applist::sim {

/// Parses a broadcast while it arrives: a transport stream, consecutive sections (recognised by the
/// suffix ".sec" of the file or by the first bytes) or the XML encoding, which is parsed at its
/// end. The bytes are read directly into the buffer of this object.
class BroadcastReader {
public:
    /// handler is called during Take() and Finish(). Without a coding it is detected.
    BroadcastReader(std::string file, std::optional<TextCoding> coding, SnapshotHandler handler);

    /// Returns the place for the next bytes, valid until the next call.
    std::span<uint8_t> Room();
    /// Parses the first count bytes of Room().
    void Take(size_t count);
    /// Parses what is left. REQUIRES: Take() is not called any more.
    void Finish();

    /// Returns why the broadcast cannot be used, with the name of the file. Empty if it can.
    /// Without services it cannot be used after Finish().
    std::string Problem() const;

    const Damage& damage() const { return m_damage; }
    uint64_t size() const { return m_size; }

private:
    void Parse(bool last);
    std::unique_ptr<BroadcastParser> MakeParser(ByteSpan bytes, bool last);

    std::string m_file;
    std::optional<TextCoding> m_coding;
    SnapshotHandler m_handler;
    Damage m_damage;
    std::vector<uint8_t> m_buffer;
    size_t m_begin = 0;  ///< Of the bytes in the buffer that are not parsed yet.
    size_t m_end = 0;
    uint64_t m_size = 0;  ///< All bytes so far.
    bool m_finished = false;
    bool m_hasServices = false;
    std::unique_ptr<BroadcastParser> m_parser;  ///< Null until the kind is known.
};

/// Divides what a parser reports of a recording into snapshots.
///
/// Tables are repeated periodically, so a reader needs some time until it has seen each of them.
/// All tables before the first new version belong to the first snapshot. If there is a clock, the
/// first snapshot ends after ten seconds, in which every table must have been repeated (TS 102 809,
/// 5.3.4). All snapshots get the last name of each service, which may arrive after its tables.
class Timeline {
public:
    /// As a SnapshotHandler.
    void Change(Snapshot snapshot, bool replaces);

    /// Returns the snapshots, at least one, and damage with the changes that were left out.
    /// REQUIRES: Change() is not called any more.
    Broadcast Finish(Damage damage);

private:
    void EndFirstSnapshot();
    void Record();

    bool m_inFirstSnapshot = true;
    std::optional<double> m_start;
    Snapshot m_current;
    std::map<uint16_t, std::string> m_names;  ///< By service.
    std::vector<Snapshot> m_snapshots;
    size_t m_surplus = 0;
};

/// Reads a broadcast from a file to its end; "-" is standard input. A failure names the file and
/// the reason. continues is called before each read with the descriptor that is read; if it returns
/// false, the broadcast ends there.
Result<Broadcast> ReadBroadcastFile(
    const std::string& file, std::optional<TextCoding> coding = std::nullopt,
    const std::function<bool(int descriptor)>& continues = [](int) { return true; });

/// Returns a line that counts the skipped parts, or an empty string if nothing was skipped.
std::string DamageSummary(const std::string& file, const Damage& damage);

/// Returns lines with the first skipped parts, and the summary.
std::string DamageRemark(const std::string& file, const Damage& damage);

}  // namespace applist::sim
