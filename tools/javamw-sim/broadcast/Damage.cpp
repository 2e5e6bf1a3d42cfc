// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "broadcast/Damage.h"

#include <array>

namespace applist::sim {
namespace {

// A pointer to a member lets one loop print every counter of Damage.
struct Kind {
    const char* name;
    size_t Damage::*count;
};

// Names the fields of packets() and sections() separately, so that each sum shows its parts.
constexpr std::array PACKET_KINDS{
    Kind{"lost sync", &Damage::lostSync},         Kind{"marked as broken", &Damage::markedPackets},
    Kind{"malformed", &Damage::malformedPackets}, Kind{"scrambled", &Damage::scrambledPackets},
    Kind{"gaps", &Damage::missingPackets},
};
constexpr std::array SECTION_KINDS{
    Kind{"wrong CRC", &Damage::wrongChecksums},
    Kind{"malformed", &Damage::malformedSections},
};
// These counters belong to neither sum, so they are printed without one.
constexpr std::array OTHER_KINDS{
    Kind{"incomplete tables", &Damage::incompleteTables},
    Kind{"changes left out", &Damage::surplusChanges},
};

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

}  // namespace

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
