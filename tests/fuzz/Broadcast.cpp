// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <functional>
#include <glib.h>
#include <set>

#include "broadcast/BroadcastParser.h"
#include "broadcast/ProgramTables.h"
#include "cli/ApplicationList.h"
#include "feed/BroadcastFilter.h"
#include "feed/ListUpdate.h"
#include "fuzz/Properties.h"
#include "support/ScannedBroadcast.h"
#include "support/TsGenerator.h"

namespace applist::test {
namespace {

using sim::Broadcast;
using sim::Items;

// The most that a section can hold.
constexpr size_t MAX_BODY = 4000;

sim::ByteSpan Span(std::string_view bytes) {
    return {reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size()};
}

bool IsUtf8(const std::string& text) {
    return g_utf8_validate(text.data(), static_cast<gssize>(text.size()), nullptr) != FALSE;
}

bool LooksAlike(const Items& items) {
    std::set<std::string> ids;
    std::set<std::string> names;
    for (const sim::Item& item : items) {
        ids.insert(item.id);
        names.insert(item.name);
    }
    return ids.size() < items.size() || names.size() < items.size() || names.count("") > 0;
}

bool Leads(const Items& shown, const Items& wanted) {
    const Items items = sim::UpdateList(shown, wanted).items;
    return std::is_permutation(items.begin(), items.end(), wanted.begin(), wanted.end());
}

std::string Check(const Broadcast& broadcast) {
    if (broadcast.snapshots.empty()) {
        return "a broadcast without a snapshot";
    }
    Items shown;
    for (const sim::Snapshot& snapshot : broadcast.snapshots) {
        const Items items = sim::OfferedItems(snapshot, {{}, {"ita"}, true});
        if (LooksAlike(items)) {
            return "two items have the same name and id, or one has an empty name";
        }
        if (!Leads(shown, items)) {
            return "an update gives a list other than the wanted one";
        }
        shown = items;
    }
    const auto list = sim::ListApplications(broadcast, {});
    const bool readable = IsUtf8(sim::FormatTable(list)) && IsUtf8(sim::FormatJson(list)) &&
                          IsUtf8(sim::FormatCsv(list));
    return readable ? "" : "an application is listed in bytes that are not UTF-8";
}

// Differs between inputs, so that a long run tries every position of a border.
size_t PieceSize(std::string_view bytes) {
    return 1 + std::hash<std::string_view>()(bytes) % 400;
}

}  // namespace

std::string CheckBroadcastStream(std::string_view bytes) {
    const Broadcast whole = ScanBroadcast(Span(bytes));
    if (TextOf(ScanBroadcast(Span(bytes), {}, PieceSize(bytes))) != TextOf(whole)) {
        return "the size of the pieces changes what a stream contains";
    }
    return Check(whole);
}

std::string CheckSectionFile(std::string_view bytes) {
    const Broadcast whole = ScanSections(Span(bytes));
    if (TextOf(ScanSections(Span(bytes), PieceSize(bytes))) != TextOf(whole)) {
        return "the size of the pieces changes what sections contain";
    }
    return Check(whole);
}

std::string CheckTableBody(std::string_view bytes) {
    bytes = bytes.substr(0, MAX_BODY);
    const TsBytes body(bytes.begin(), bytes.end());
    const TsBytes applications = TsSection(0x74, 0x0010, body);
    const Broadcast broadcast = ScanSections(applications);
    const bool parsed = sim::ParseApplicationTable(applications).has_value();
    if (broadcast.damage.sections() != (parsed ? 0U : 1U)) {
        return "a table is neither read nor counted as damaged";
    }
    static_cast<void>(sim::ParseProgramAssociation(TsSection(0x00, 1, body)));
    static_cast<void>(sim::ParseProgramMap(TsSection(0x02, 1, body)));
    static_cast<void>(sim::ParseServiceDescription(TsSection(0x42, 1, body)));
    return Check(broadcast);
}

std::string CheckApplicationXml(std::string_view bytes) {
    const auto broadcast = sim::ReadApplicationXml(Span(bytes));
    if (broadcast) {
        return Check(*broadcast);
    }
    return broadcast.error().empty() ? "a document is refused without a reason" : "";
}

}  // namespace applist::test
