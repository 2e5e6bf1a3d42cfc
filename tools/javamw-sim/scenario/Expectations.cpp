// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <memory>
#include <span>
#include <utility>

#include "scenario/StatementRunner.h"
#include "scenario/Words.h"

/// Expectations of events, announcements, lists and replies.
namespace applist::sim {
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
        expectation.times = cursor.Number("the number of times", 1, MOST_EVENTS);
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

Action ReadSelection(Cursor& cursor) {
    return cursor.Skip("none") ? ExpectSelection{} : ExpectSelection{cursor.Pattern()};
}

Action ReadReply(Cursor& cursor) {
    if (cursor.Skip("empty")) {
        return ExpectReply{Bytes()};
    }
    return cursor.Skip("hex") ? ExpectReply{cursor.Hex()} : ExpectReply{ReadPatterns(cursor)};
}

}  // namespace

const Rules& ExpectationRules() {
    static const Rules RULES{
        {{"event", "NAME [times N] [within T]", "Expect this as the next event"}, ReadEvent},
        {{"no", "event for T", "Expect no event during T"}, ReadNoEvent},
        {{"announcement", "STEP [within T]", "Expect this as the next announcement"},
         ReadAnnouncement},
        {{"list", "empty | ID[=NAME]...", "Expect exactly these items in this order"}, ReadList},
        {{"count", "N", "Expect this number of items"},
         [](Cursor& cursor) -> Action {
             return ExpectCount{cursor.Number("the number of items", 0, MOST_ITEMS)};
         }},
        {{"selection", "none | ID[=NAME]", "Expect this selection"}, ReadSelection},
        {{"reply", "empty | hex HEX... | ID[=NAME]...", "Expect this reply to the last call"},
         ReadReply},
        {{"error", "[TEXT]", "Expect that the last call failed"},
         [](Cursor& cursor) -> Action {
             return ExpectError{cursor.AtEnd() ? std::string() : cursor.Text("")};
         }},
    };
    return RULES;
}

namespace {

bool IsEvent(const Bytes& message, Event event) {
    const auto notification = DecodeNotification(message);
    return notification && notification->event == event && notification->payloadSize == 0;
}

bool Fits(const ItemPattern& pattern, const Item& item) {
    return pattern.id == item.id && (!pattern.name || *pattern.name == item.name);
}

bool Fit(const std::vector<ItemPattern>& patterns, const Items& items) {
    return std::equal(patterns.begin(), patterns.end(), items.begin(), items.end(), Fits);
}

// Truncates a long list, but includes its length.
std::string Describe(const Items& items) {
    constexpr size_t MOST_SHOWN = 20;
    std::string text;
    for (size_t i = 0; i < std::min(items.size(), MOST_SHOWN); ++i) {
        text += (i == 0 ? "" : ", ") + items[i].id + '=' + items[i].name;
    }
    return items.empty() ? "nothing"
                         : text + (items.size() > MOST_SHOWN ? ", ..." : "") + " (" +
                               std::to_string(items.size()) + ')';
}

std::string Describe(const Bytes& bytes) {
    constexpr size_t MOST_SHOWN = 64;
    std::string text = std::to_string(bytes.size()) + " bytes";
    for (const char& byte : std::span(bytes).first(std::min(bytes.size(), MOST_SHOWN))) {
        text += ' ' + ToHex(std::string_view(&byte, 1));
    }
    return text + (bytes.size() > MOST_SHOWN ? " ..." : "");
}

/// Calls function and fails with the problem that judge finds in the items of the reply.
Outcome Ask(StatementRunner& runner, Function function,
            const std::function<std::string(const Items& items)>& judge) {
    Outcome found = runner.FindApplication();
    if (!found.held()) {
        return found;
    }
    Middleware& middleware = runner.acting().middleware;
    const auto reply = std::make_shared<std::optional<Result<Bytes>>>();
    middleware.link().Call(middleware.application(), EncodeCall(function, {}),
                           [reply](const Result<Bytes>& bytes) { *reply = bytes; });
    Outcome waited = runner.Await([&] { return reply->has_value(); }, runner.timeout(),
                                  "no reply within " + DescribeTime(runner.timeout()));
    if (!waited.held()) {
        return waited;
    }
    const std::string subject(NameOf(function));
    if (const auto items = ItemsOf(**reply)) {
        return HeldUnless(judge(*items));
    }
    return Failed(**reply ? "the reply of " + subject + " is not a list of items"
                          : subject + " failed: " + (*reply)->error());
}

}  // namespace

Outcome ExpectEvent::Run(StatementRunner& runner) const {
    unsigned seen = 0;
    std::optional<std::string> other;
    auto& events = runner.acting().events;
    const auto done = [&] {
        for (; !events.empty() && seen < times && !other; events.pop_front()) {
            if (IsEvent(events.front(), event)) {
                ++seen;
            } else {
                other = DescribeMessage(events.front());
            }
        }
        return seen == times || other.has_value();
    };
    const Duration patience = within.value_or(runner.timeout());
    Outcome waited = runner.Await(done, patience, "no event within " + DescribeTime(patience));
    const std::string before =
        times == 1 ? "" : "after " + std::to_string(seen) + " of " + std::to_string(times) + ": ";
    if (waited.verdict == Verdict::Failed) {
        return Failed(before + waited.problem);
    }
    return other ? Failed(before + "received " + *other + " instead") : waited;
}

Outcome ExpectNoEvent::Run(StatementRunner& runner) const {
    const auto& events = runner.acting().events;
    Outcome waited = runner.Await([&] { return !events.empty(); }, duration, "as expected");
    if (waited.verdict == Verdict::Failed) {
        return Held();
    }
    return waited.held() ? Failed("received " + DescribeMessage(events.front())) : waited;
}

Outcome ExpectAnnouncement::Run(StatementRunner& runner) const {
    Outcome joined = runner.Join();
    if (!joined.held()) {
        return joined;
    }
    auto& heard = runner.acting().announcements;
    const Duration patience = within.value_or(runner.timeout());
    Outcome waited = runner.Await([&] { return !heard.empty(); }, patience,
                                  "no announcement within " + DescribeTime(patience));
    if (!waited.held()) {
        return waited;
    }
    const Announcement first = heard.front();
    heard.pop_front();
    return first == announcement ? Held()
                                 : Failed("received " + std::string(NameOf(first)) + " instead");
}

Outcome ExpectList::Run(StatementRunner& runner) const {
    return Ask(runner, Function::GetAllItems, [&](const Items& listed) {
        return Fit(items, listed) ? "" : "the list holds " + Describe(listed);
    });
}

Outcome ExpectCount::Run(StatementRunner& runner) const {
    return Ask(runner, Function::GetAllItems, [&](const Items& items) {
        return count == items.size() ? ""
                                     : "the list holds " + std::to_string(items.size()) + " items";
    });
}

Outcome ExpectSelection::Run(StatementRunner& runner) const {
    return Ask(runner, Function::GetSelection, [&](const Items& selected) {
        if (selected.size() != 1) {
            return "the reply holds " + Describe(selected);
        }
        const Item& first = selected.front();
        const bool none = first.id.empty() && first.name.empty();
        if (item ? Fits(*item, first) : none) {
            return std::string();
        }
        return none ? "no item is selected" : "the selection is " + first.id + '=' + first.name;
    });
}

Outcome ExpectReply::Run(StatementRunner& runner) const {
    const auto& reply = runner.acting().lastReply;
    if (!reply || !*reply) {
        return Failed(reply ? "the call failed: " + reply->error() : "no call has been made");
    }
    if (const auto* bytes = std::get_if<Bytes>(&content)) {
        return *bytes == **reply ? Held() : Failed("the reply has " + Describe(**reply));
    }
    const auto items = DecodeItems(**reply);
    if (!items) {
        return Failed("the reply is not a list of items: " + Describe(**reply));
    }
    return Fit(std::get<std::vector<ItemPattern>>(content), *items)
               ? Held()
               : Failed("the reply holds " + Describe(*items));
}

Outcome ExpectError::Run(StatementRunner& runner) const {
    const auto& reply = runner.acting().lastReply;
    if (!reply || *reply) {
        return Failed(reply ? "the call succeeded with a reply of " + Describe(**reply)
                            : "no call has been made");
    }
    return reply->error().find(text) != std::string::npos
               ? Held()
               : Failed("the error is: " + reply->error());
}

}  // namespace applist::sim
