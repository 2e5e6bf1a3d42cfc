// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "broadcast/BroadcastReader.h"

#include <algorithm>
#include <glib.h>
#include <string_view>
#include <utility>

#include "File.h"
#include "broadcast/PacketReader.h"

namespace applist::sim {
namespace {

constexpr const char* NO_BROADCAST =
    "neither a transport stream with services nor sections nor XML of applications";

// Few calls read a second of a broadcast, and the buffer stays in the cache of the processor.
constexpr size_t CHUNK = 256 * size_t{1024};

bool EndsWith(const std::string& file, const char* suffix) {
    const std::string wanted = suffix;
    return file.size() >= wanted.size() &&
           g_ascii_strcasecmp(file.c_str() + file.size() - wanted.size(), suffix) == 0;
}

// Skips a byte order mark and white space. With two bytes per character, the mark alone suffices.
bool BeginsAsXml(std::string_view content) {
    if (content.starts_with("\xFF\xFE") || content.starts_with("\xFE\xFF")) {
        return true;
    }
    if (content.starts_with("\xEF\xBB\xBF")) {
        content.remove_prefix(3);
    }
    const size_t first = content.find_first_not_of(" \t\r\n");
    return first != std::string_view::npos && content[first] == '<';
}

}  // namespace

BroadcastReader::BroadcastReader(std::string file, std::optional<TextCoding> coding,
                                 SnapshotHandler handler)
    : m_file(std::move(file)),
      m_coding(coding),
      m_handler([this, handler = std::move(handler)](Snapshot snapshot, bool replaces) {
          m_hasServices = m_hasServices || !snapshot.services.empty();
          handler(std::move(snapshot), replaces);
      }) {}

std::span<uint8_t> BroadcastReader::Room() {
    std::copy(m_buffer.begin() + static_cast<std::ptrdiff_t>(m_begin),
              m_buffer.begin() + static_cast<std::ptrdiff_t>(m_end), m_buffer.begin());
    m_end -= std::exchange(m_begin, 0);
    // A parser leaves a few kilobytes at most, except of XML.
    m_buffer.resize(std::max(m_buffer.size(), m_end + CHUNK));
    return std::span(m_buffer).subspan(m_end, CHUNK);
}

void BroadcastReader::Take(size_t count) {
    m_end += count;
    m_size += count;
    Parse(false);
}

void BroadcastReader::Finish() {
    Parse(true);
    m_finished = true;
}

void BroadcastReader::Parse(bool last) {
    const ByteSpan bytes = ByteSpan(m_buffer).subspan(m_begin, m_end - m_begin);
    if (!m_parser) {
        m_parser = MakeParser(bytes, last);
    }
    if (m_parser) {
        m_begin += m_parser->Parse(bytes, last);
    }
}

// Returns null if the kind needs more bytes.
std::unique_ptr<BroadcastParser> BroadcastReader::MakeParser(ByteSpan bytes, bool last) {
    // No section has the id of a sync byte. Of other bytes a section decides.
    const Found section =
        !bytes.empty() && bytes[0] == SYNC_BYTE ? Found::No : BeginsWithSection(bytes, last);
    // The suffix decides first, so that a damaged section file is still read as sections.
    if (EndsWith(m_file, ".sec") || section == Found::Yes) {
        // Sections alone do not contain the map that would reveal ISDB, so DVB is the default.
        return MakeSectionParser(m_coding.value_or(TextCoding::Dvb), m_handler, m_damage);
    }
    if (section == Found::Unknown) {
        return nullptr;
    }
    if (BeginsAsXml({reinterpret_cast<const char*>(bytes.data()), bytes.size()})) {
        return MakeXmlParser(m_handler, m_damage);
    }
    return MakeStreamParser(m_coding, m_handler, m_damage);
}

std::string BroadcastReader::Problem() const {
    if (m_parser && !m_parser->error().empty()) {
        return m_file + ": " + m_parser->error();
    }
    if (m_hasServices || !m_finished) {
        return {};
    }
    // The damage may explain why nothing was found, so it is part of the error.
    const std::string damage = DamageRemark(m_file, m_damage);
    return m_file + ": " + NO_BROADCAST + (damage.empty() ? "" : "\n" + damage);
}

namespace {

// ETSI TS 102 809, 5.3.4: every table must have been repeated within this period.
constexpr double FIRST_MOMENT_S = 10;
// Far more than any real recording; beyond it the stream is assumed to be hostile.
constexpr size_t MAX_MOMENTS = 1000;

bool SameTables(const BroadcastService& one, const BroadcastService& other) {
    return std::ranges::equal(one.tables, other.tables,
                              // Equal pointers spare the comparison of the contents.
                              [](const auto& a, const auto& b) { return a == b || *a == *b; });
}

// Names are left out, because they are those of the whole recording.
bool SameServices(const std::vector<BroadcastService>& one,
                  const std::vector<BroadcastService>& other) {
    return std::ranges::equal(one, other, [](const BroadcastService& a, const BroadcastService& b) {
        return a.id == b.id && SameTables(a, b);
    });
}

}  // namespace

void Timeline::Change(Snapshot snapshot, bool replaces) {
    if (!m_start) {
        m_start = snapshot.seconds;
    }
    const bool late = snapshot.seconds && *snapshot.seconds - *m_start > FIRST_MOMENT_S;
    // The first snapshot must be recorded before the change takes effect.
    if (replaces || late) {
        EndFirstSnapshot();
    }
    for (const BroadcastService& service : snapshot.services) {
        if (!service.name.empty()) {
            m_names[service.id.value_or(0)] = service.name;
        }
    }
    m_current = std::move(snapshot);
    if (!m_inFirstSnapshot) {
        Record();
    }
}

Broadcast Timeline::Finish(Damage damage) {
    EndFirstSnapshot();
    for (Snapshot& snapshot : m_snapshots) {
        for (BroadcastService& service : snapshot.services) {
            service.name = m_names[service.id.value_or(0)];
        }
    }
    damage.surplusChanges = m_surplus;
    return {std::move(m_snapshots), std::move(damage)};
}

void Timeline::EndFirstSnapshot() {
    if (m_inFirstSnapshot) {
        m_inFirstSnapshot = false;
        m_current.seconds = 0;
        Record();
    }
}

void Timeline::Record() {
    if (!m_snapshots.empty() && SameServices(m_snapshots.back().services, m_current.services)) {
        return;
    }
    // The loss is counted, so that the user sees that changes are missing.
    if (m_snapshots.size() == MAX_MOMENTS) {
        ++m_surplus;
    } else {
        m_snapshots.push_back(m_current);
    }
}

Result<Broadcast> ReadBroadcastFile(const std::string& file, std::optional<TextCoding> coding,
                                    const std::function<bool(int descriptor)>& continues) {
    auto input = InputFile::Open(file);
    if (!input) {
        return Result<Broadcast>::Failure(input.error());
    }
    Timeline timeline;
    BroadcastReader reader(file, coding, [&](Snapshot snapshot, bool replaces) {
        timeline.Change(std::move(snapshot), replaces);
    });
    for (size_t count = 1;
         count > 0 && reader.Problem().empty() && continues(input->descriptor());) {
        const auto read = input->Read(reader.Room());
        if (!read) {
            return Result<Broadcast>::Failure(read.error());
        }
        count = *read;
        reader.Take(count);
    }
    reader.Finish();
    const std::string problem = reader.Problem();
    return problem.empty() ? Result(timeline.Finish(reader.damage()))
                           : Result<Broadcast>::Failure(problem);
}

std::string DamageSummary(const std::string& file, const Damage& damage) {
    const std::string text = Describe(damage);
    // An empty text means that nothing was skipped, and callers print no remark.
    return text.empty() ? text : file + ": skipped damaged parts: " + text;
}

std::string DamageRemark(const std::string& file, const Damage& damage) {
    std::string remark;
    for (const std::string& place : damage.places) {
        remark.append(file).append(": ").append(place).append("\n");
    }
    return remark + DamageSummary(file, damage);
}

}  // namespace applist::sim
