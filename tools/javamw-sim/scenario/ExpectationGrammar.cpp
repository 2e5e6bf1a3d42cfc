// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "scenario/Grammar.h"

namespace applist::sim::grammar {
namespace {

constexpr uint32_t MOST_EVENTS = 1000000;
constexpr uint32_t MOST_ITEMS = 1000000;

std::vector<ItemPattern> ReadPatterns(Cursor& cursor) {
    std::vector<ItemPattern> patterns{cursor.Pattern()};
    while (!cursor.AtEnd()) {
        patterns.push_back(cursor.Pattern());
    }
    return patterns;
}

Action ReadEvent(Cursor& cursor) {
    ExpectEvent expectation;
    expectation.event = cursor.OneOf(EVENTS);
    if (cursor.Skip("times")) {
        expectation.times = cursor.Number("how often", 1, MOST_EVENTS);
    }
    expectation.within = cursor.Within();
    return expectation;
}

Action ReadNoEvent(Cursor& cursor) {
    cursor.Choice({"event"});
    cursor.Choice({"for"});
    return ExpectNoEvent{cursor.Time()};
}

Action ReadAnnouncement(Cursor& cursor) {
    const Announcement announcement = cursor.OneOf(ANNOUNCEMENTS);
    return ExpectAnnouncement{announcement, cursor.Within()};
}

Action ReadList(Cursor& cursor) {
    return cursor.Skip("empty") ? ExpectList{} : ExpectList{ReadPatterns(cursor)};
}

Action ReadCount(Cursor& cursor) {
    return ExpectCount{cursor.Number("the number of items", 0, MOST_ITEMS)};
}

Action ReadSelection(Cursor& cursor) {
    return cursor.Skip("none") ? ExpectSelection{} : ExpectSelection{cursor.Pattern()};
}

Action ReadReply(Cursor& cursor) {
    if (cursor.Skip("empty")) {
        return ExpectReply{Bytes()};
    }
    if (cursor.Skip("hex")) {
        return ExpectReply{cursor.Hex()};
    }
    return ExpectReply{ReadPatterns(cursor)};
}

Action ReadError(Cursor& cursor) {
    return ExpectError{cursor.AtEnd() ? std::string() : cursor.Text("")};
}

}  // namespace

std::vector<Rule> ExpectationRules() {
    return {
        {{"event", "NAME [times N] [within T]", "The next event is this"}, &ReadEvent},
        {{"no", "event for T", "No event comes for so long"}, &ReadNoEvent},
        {{"announcement", "STEP [within T]", "The next announcement heard is this"},
         &ReadAnnouncement},
        {{"list", "empty | ID[=NAME]...", "The list holds these, in this order"}, &ReadList},
        {{"count", "N", "The list holds so many items"}, &ReadCount},
        {{"selection", "none | ID[=NAME]", "This is selected"}, &ReadSelection},
        {{"reply", "empty | hex HEX... | ID[=NAME]...", "The last call returned this"}, &ReadReply},
        {{"error", "[TEXT]", "The last call failed"}, &ReadError},
    };
}

}  // namespace applist::sim::grammar
