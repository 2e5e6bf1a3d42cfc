// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "broadcast/Damage.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <utility>

namespace applist::sim {
namespace {

// A pointer to a member lets one loop print every counter of Damage.
struct Kind {
    const char* name;
    size_t Damage::*count;
    const char* one;  ///< The name of a single one, for its place.
};

// Names the fields of packets() and sections() separately, so that each sum shows its parts.
constexpr std::array PACKET_KINDS{
    Kind{"lost sync", &Damage::lostSync, "lost sync"},
    Kind{"marked as broken", &Damage::markedPackets, "packet marked as broken"},
    Kind{"malformed", &Damage::malformedPackets, "malformed packet"},
    Kind{"scrambled", &Damage::scrambledPackets, "scrambled packet"},
    Kind{"gaps", &Damage::missingPackets, "gap"},
};
constexpr std::array SECTION_KINDS{
    Kind{"wrong CRC", &Damage::wrongChecksums, "wrong CRC"},
    Kind{"malformed", &Damage::malformedSections, "malformed section"},
};
// These counters belong to neither sum, so they are printed without one.
constexpr std::array OTHER_KINDS{
    Kind{"incomplete tables", &Damage::incompleteTables, nullptr},
    Kind{"changes left out", &Damage::surplusChanges, nullptr},
};
// A bad reception damages thousands of packets. The first places are enough to find the cause.
constexpr size_t MAX_PLACES = 10;

void Append(std::string& list, const std::string& text) {
    list += (list.empty() ? "" : ", ") + text;
}

template <typename Kinds>
std::string Counts(const Damage& damage, const Kinds& kinds) {
    std::string text;
    for (const Kind& kind : kinds) {
        if (damage.*kind.count > 0) {
            Append(text, std::to_string(damage.*kind.count) + ' ' + kind.name);
        }
    }
    return text;
}

template <typename Kinds>
std::string NameOfOne(size_t Damage::*counter, const Kinds& kinds) {
    const auto found = std::find_if(kinds.begin(), kinds.end(),
                                    [&](const Kind& kind) { return kind.count == counter; });
    return found != kinds.end() ? found->one : "";
}

}  // namespace

void Damage::Add(size_t Damage::*counter) {
    ++(this->*counter);
    if (places.size() == MAX_PLACES) {
        return;
    }
    std::string place = NameOfOne(counter, PACKET_KINDS) + NameOfOne(counter, SECTION_KINDS) +
                        " at byte " + std::to_string(m_byte);
    if (m_pid) {
        std::array<char, sizeof " on PID 0x0000"> pid{};
        static_cast<void>(std::snprintf(pid.data(), pid.size(), " on PID 0x%04x", *m_pid));
        place += pid.data();
    }
    places.push_back(std::move(place));
}

std::string Describe(const Damage& damage) {
    std::string text;
    if (damage.packets() > 0) {
        Append(text, std::to_string(damage.packets()) + " in packets (" +
                         Counts(damage, PACKET_KINDS) + ')');
    }
    if (damage.sections() > 0) {
        Append(text, std::to_string(damage.sections()) + " in sections (" +
                         Counts(damage, SECTION_KINDS) + ')');
    }
    const std::string others = Counts(damage, OTHER_KINDS);
    if (!others.empty()) {
        Append(text, others);
    }
    return text;
}

}  // namespace applist::sim
