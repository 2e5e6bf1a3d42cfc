// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "broadcast/Damage.h"

#include <algorithm>
#include <array>
#include <glib.h>
#include <utility>

namespace applist::sim {
namespace {

enum class Part { Packets, Sections, Others };

// A pointer to a member lets one loop print every counter of Damage.
struct Kind {
    Part part;
    const char* name;
    size_t Damage::*count;
    const char* one;  ///< The name of a single one, for its place.
};

// The first two parts are the fields of packets() and sections(), so that each sum shows its parts.
constexpr std::array KINDS{
    Kind{Part::Packets, "lost sync", &Damage::lostSync, "lost sync"},
    Kind{Part::Packets, "marked as broken", &Damage::markedPackets, "packet marked as broken"},
    Kind{Part::Packets, "malformed", &Damage::malformedPackets, "malformed packet"},
    Kind{Part::Packets, "scrambled", &Damage::scrambledPackets, "scrambled packet"},
    Kind{Part::Packets, "gaps", &Damage::missingPackets, "gap"},
    Kind{Part::Sections, "wrong CRC", &Damage::wrongChecksums, "wrong CRC"},
    Kind{Part::Sections, "malformed", &Damage::malformedSections, "malformed section"},
    Kind{Part::Others, "incomplete tables", &Damage::incompleteTables, "incomplete table"},
    Kind{Part::Others, "changes left out", &Damage::surplusChanges, "change left out"},
};
// A bad reception damages thousands of packets. The first places are enough to find the cause.
constexpr size_t MAX_PLACES = 10;

void Append(std::string& list, const std::string& text) {
    list += (list.empty() || text.empty() ? "" : ", ") + text;
}

std::string Counts(const Damage& damage, Part part) {
    std::string text;
    for (const Kind& kind : KINDS) {
        if (kind.part == part && damage.*kind.count > 0) {
            Append(text, std::to_string(damage.*kind.count) + ' ' + kind.name);
        }
    }
    return text;
}

}  // namespace

void Damage::Add(size_t Damage::*counter) {
    ++(this->*counter);
    if (places.size() == MAX_PLACES) {
        return;
    }
    const auto* const kind = std::ranges::find(KINDS, counter, &Kind::count);
    std::string place = std::string(kind->one) + " at byte " + std::to_string(m_byte);
    if (m_pid) {
        g_autofree char* pid = g_strdup_printf(" on PID 0x%04x", *m_pid);
        place += pid;
    }
    places.push_back(std::move(place));
}

std::string Describe(const Damage& damage) {
    std::string text;
    const auto add = [&](size_t sum, const char* where, Part part) {
        if (sum > 0) {
            Append(text, std::to_string(sum) + where + Counts(damage, part) + ')');
        }
    };
    add(damage.packets(), " in packets (", Part::Packets);
    add(damage.sections(), " in sections (", Part::Sections);
    Append(text, Counts(damage, Part::Others));
    return text;
}

}  // namespace applist::sim
