// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "feed/BroadcastFile.h"

#include <algorithm>
#include <array>
#include <glib.h>

#include "broadcast/ApplicationXml.h"
#include "broadcast/BroadcastScan.h"
#include "broadcast/SectionFile.h"
#include "common/File.h"

namespace applist::sim {
namespace {

constexpr const char* NO_BROADCAST =
    "neither a transport stream with services nor sections nor XML of applications";

enum class Kind { Stream, Sections, Xml };

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

Kind KindOf(const std::string& file, std::string_view content, ByteSpan bytes) {
    // The suffix decides first, so that a damaged section file is still read as sections.
    if (EndsWith(file, ".sec") || BeginsWithSection(bytes)) {
        return Kind::Sections;
    }
    return BeginsAsXml(content) ? Kind::Xml : Kind::Stream;
}

Result<Broadcast> Read(const std::string& file, std::string_view content,
                       std::optional<TextCoding> coding) {
    const ByteSpan bytes(reinterpret_cast<const uint8_t*>(content.data()), content.size());
    switch (KindOf(file, content, bytes)) {
        case Kind::Sections:
            // Sections alone do not contain the map that would reveal ISDB, so DVB is the default.
            return ScanSections(bytes, coding.value_or(TextCoding::Dvb));
        case Kind::Xml:
            return ReadApplicationXml(bytes);
        case Kind::Stream:
            break;
    }
    return ScanBroadcast(bytes, coding);
}

bool HasServices(const Snapshot& snapshot) {
    return !snapshot.services.empty();
}

}  // namespace

Result<Broadcast> ReadBroadcastFile(const std::string& file, std::optional<TextCoding> coding) {
    const auto input = File::Read(file);
    if (!input) {
        return Result<Broadcast>::Failure(input.error());
    }
    auto broadcast = Read(file, input->content(), coding);
    if (!broadcast) {
        return Result<Broadcast>::Failure(file + ": " + broadcast.error());
    }
    if (std::none_of(broadcast->snapshots.begin(), broadcast->snapshots.end(), HasServices)) {
        // The damage may explain why nothing was found, so it is part of the error.
        const std::string damage = DamageRemark(file, broadcast->damage);
        return Result<Broadcast>::Failure(file + ": " + NO_BROADCAST +
                                          (damage.empty() ? "" : "\n" + damage));
    }
    return broadcast;
}

std::string DamageRemark(const std::string& file, const Damage& damage) {
    const std::string text = Describe(damage);
    // An empty text means that nothing was skipped, and callers print no remark.
    return text.empty() ? text : file + ": skipped damaged parts: " + text;
}

}  // namespace applist::sim
