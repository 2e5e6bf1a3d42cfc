// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <glib.h>
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

bool IsEvent(const Bytes& message, Event event) {
    const auto notification = DecodeNotification(message);
    return notification && notification->event == event && notification->payloadSize == 0;
}

bool Fits(const ItemPattern& pattern, const Item& item) {
    return pattern.id == item.id && (!pattern.name || *pattern.name == item.name);
}

bool Fit(const std::vector<ItemPattern>& patterns, const Items& items) {
    return std::ranges::equal(patterns, items, Fits);
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

std::vector<ItemPattern> ReadPatterns(Cursor& cursor) {
    std::vector<ItemPattern> patterns{cursor.Pattern()};
    while (!cursor.AtEnd()) {
        patterns.push_back(cursor.Pattern());
    }
    return patterns;
}

std::string Monitor(const std::string& match) {
    g_autofree char* quoted = g_shell_quote(("type='signal'," + match).c_str());
    return std::string(" monitor --match=") + quoted;
}

std::string MonitorEvents() {
    return Monitor(std::string("interface='") + names::INTERFACE + "'");
}

/// Takes the next events, of which the first times must be event.
Outcome TakeEvents(StatementRunner& runner, Event event, unsigned times, Duration patience) {
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
    Outcome waited = runner.Await(done, patience, "no event within " + DescribeTime(patience));
    const std::string before =
        times == 1 ? "" : "after " + std::to_string(seen) + " of " + std::to_string(times) + ": ";
    if (waited.verdict == Verdict::Failed) {
        return Failed(before + waited.problem);
    }
    return other ? Failed(before + "received " + *other + " instead") : waited;
}

Action ReadEvent(Cursor& cursor) {
    const Event event = cursor.OneOf(EVENTS);
    const unsigned times =
        cursor.Skip("times") ? cursor.Number("the number of times", 1, MOST_EVENTS) : 1;
    return {.run =
                [event, times, within = cursor.Within()](StatementRunner& runner) {
                    return TakeEvents(runner, event, times, within.value_or(runner.timeout()));
                },
            .busctl = MonitorEvents()};
}

Action ReadNoEvent(Cursor& cursor) {
    cursor.Choice({"event"});
    cursor.Choice({"for"});
    const auto listen = [time = cursor.Time()](StatementRunner& runner) {
        const auto& events = runner.acting().events;
        Outcome waited = runner.Await([&] { return !events.empty(); }, time, "as expected");
        if (waited.verdict == Verdict::Failed) {
            return Held();
        }
        return waited.held() ? Failed("received " + DescribeMessage(events.front())) : waited;
    };
    return {.run = listen, .busctl = MonitorEvents()};
}

Action ReadAnnouncement(Cursor& cursor) {
    const Announcement announcement = cursor.OneOf(ANNOUNCEMENTS);
    const auto take = [announcement, within = cursor.Within()](StatementRunner& runner) {
        auto& heard = runner.acting().announcements;
        const Duration patience = within.value_or(runner.timeout());
        Outcome waited = runner.Await([&] { return !heard.empty(); }, patience,
                                      "no announcement within " + DescribeTime(patience));
        if (!waited.held()) {
            return waited;
        }
        const Announcement first = heard.front();
        heard.pop_front();
        return first == announcement
                   ? Held()
                   : Failed("received " + std::string(NameOf(first)) + " instead");
    };
    return {.run = take,
            .needs = Action::Needs::Bus,
            .busctl = Monitor("sender='org.freedesktop.DBus',member='NameOwnerChanged',"
                              "arg0namespace='org.vantu.JavaMW'")};
}

/// Returns the problem with the items of a reply, or an empty string.
using JudgeItems = std::function<std::string(const Items& items)>;

Outcome Ask(StatementRunner& runner, Function function, const JudgeItems& judge) {
    Middleware& middleware = runner.acting().middleware;
    // The reply may arrive when this statement has timed out.
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

/// Calls function and judges the items of the reply.
Action Asking(Function function, const JudgeItems& judge) {
    return {
        .run = [=](StatementRunner& runner) { return Ask(runner, function, judge); },
        .needs = Action::Needs::Application,
        .message = CallMessage({function, {}}),
    };
}

Action ReadList(Cursor& cursor) {
    const auto items = cursor.Skip("empty") ? std::vector<ItemPattern>() : ReadPatterns(cursor);
    return Asking(Function::GetAllItems, [items](const Items& listed) {
        return Fit(items, listed) ? "" : "the list holds " + Describe(listed);
    });
}

Action ReadCount(Cursor& cursor) {
    const size_t count = cursor.Number("the number of items", 0, MOST_ITEMS);
    return Asking(Function::GetAllItems, [count](const Items& items) {
        return count == items.size() ? ""
                                     : "the list holds " + std::to_string(items.size()) + " items";
    });
}

Action ReadSelection(Cursor& cursor) {
    const auto item = cursor.Skip("none") ? std::nullopt : std::optional(cursor.Pattern());
    return Asking(Function::GetSelection, [item](const Items& selected) {
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

/// Judges the last reply, which must not be an error. judge returns the problem.
Action JudgingReply(std::function<std::string(const Bytes& reply)> judge) {
    return {.run = [judge = std::move(judge)](StatementRunner& runner) {
        const auto& reply = runner.acting().lastReply;
        if (!reply || !*reply) {
            return Failed(reply ? "the call failed: " + reply->error() : "no call has been made");
        }
        return HeldUnless(judge(**reply));
    }};
}

Action ReadReply(Cursor& cursor) {
    const bool empty = cursor.Skip("empty");
    if (empty || cursor.Skip("hex")) {
        const Bytes bytes = empty ? Bytes() : cursor.Hex();
        return JudgingReply([bytes](const Bytes& reply) {
            return bytes == reply ? "" : "the reply has " + Describe(reply);
        });
    }
    return JudgingReply([patterns = ReadPatterns(cursor)](const Bytes& reply) {
        const auto items = DecodeItems(reply);
        if (!items) {
            return "the reply is not a list of items: " + Describe(reply);
        }
        return Fit(patterns, *items) ? "" : "the reply holds " + Describe(*items);
    });
}

Action ReadError(Cursor& cursor) {
    const std::string text = cursor.AtEnd() ? std::string() : cursor.Text("");
    const auto check = [text](StatementRunner& runner) {
        const auto& reply = runner.acting().lastReply;
        if (!reply || *reply) {
            return Failed(reply ? "the call succeeded with a reply of " + Describe(**reply)
                                : "no call has been made");
        }
        return reply->error().find(text) != std::string::npos
                   ? Held()
                   : Failed("the error is: " + reply->error());
    };
    return {.run = check, .kind = Action::Kind::ErrorExpected};
}

}  // namespace

const Rules& ExpectationRules() {
    static const Rules RULES{
        {{"event", "NAME [times N] [within T]", "Expect this as the next event"}, ReadEvent},
        {{"no", "event for T", "Expect no event during T"}, ReadNoEvent},
        {{"announcement", "STEP [within T]", "Expect this as the next announcement"},
         ReadAnnouncement},
        {{"list", "empty | ID[=NAME]...", "Expect exactly these items in this order"}, ReadList},
        {{"count", "N", "Expect this number of items"}, ReadCount},
        {{"selection", "none | ID[=NAME]", "Expect this selection"}, ReadSelection},
        {{"reply", "empty | hex HEX... | ID[=NAME]...", "Expect this reply to the last call"},
         ReadReply},
        {{"error", "[TEXT]", "Expect that the last call failed"}, ReadError},
    };
    return RULES;
}

}  // namespace applist::sim
