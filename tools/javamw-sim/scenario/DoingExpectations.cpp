// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <span>

#include "protocol/Hex.h"
#include "scenario/Doing.h"

namespace applist::sim {
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

// A long list says no more than its beginning and its length.
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

std::string ProblemOfReply(const ExpectReply& expected, const Bytes& reply) {
    if (const auto* bytes = std::get_if<Bytes>(&expected.content)) {
        return *bytes == reply ? "" : "the reply has " + Describe(reply);
    }
    const auto items = DecodeItems(reply);
    if (!items) {
        return "the reply is no list of items: " + Describe(reply);
    }
    return Fit(std::get<std::vector<ItemPattern>>(expected.content), *items)
               ? ""
               : "the reply holds " + Describe(*items);
}

}  // namespace

Outcome Executor::Doing::operator()(const ExpectEvent& action) const {
    unsigned seen = 0;
    std::optional<std::string> other;
    auto& events = partner().events();
    const auto done = [&] {
        while (!events.empty() && seen < action.times && !other) {
            if (IsEvent(events.front(), action.event)) {
                ++seen;
            } else {
                other = DescribeMessage(events.front());
            }
            events.pop_front();
        }
        return seen == action.times || other.has_value();
    };
    const Duration patience = PatienceOf(action.within);
    const Outcome waited = AwaitThen(done, patience, "none came within " + DescribeTime(patience));
    const std::string before = action.times == 1 ? "" : "after " + std::to_string(seen) + " ";
    if (waited.verdict == Verdict::Failed) {
        return Failed(before + waited.problem);
    }
    return other ? Failed(before + "came " + *other + " instead") : waited;
}

Outcome Executor::Doing::operator()(const ExpectNoEvent& action) const {
    auto& events = partner().events();
    const Outcome waited =
        AwaitThen([&] { return !events.empty(); }, action.duration, "as expected");
    if (waited.verdict == Verdict::Failed) {
        return Held();
    }
    return waited.verdict == Verdict::Held ? Failed("came " + DescribeMessage(events.front()))
                                           : waited;
}

Outcome Executor::Doing::operator()(const ExpectAnnouncement& action) const {
    Outcome joined = (*this)(Join());
    if (joined.verdict != Verdict::Held) {
        return joined;
    }
    auto& heard = partner().announcements();
    const Duration patience = PatienceOf(action.within);
    Outcome waited = AwaitThen([&] { return !heard.empty(); }, patience,
                               "none was heard within " + DescribeTime(patience));
    if (waited.verdict == Verdict::Held) {
        const Announcement first = heard.front();
        heard.pop_front();
        return first == action.announcement
                   ? Held()
                   : Failed("heard " + std::string(NameOf(first)) + " instead");
    }
    return waited;
}

Outcome Executor::Doing::operator()(const ExpectList& action) const {
    return Ask(Function::GetAllItems, [&](const Items& items) {
        return Fit(action.items, items) ? "" : "the list holds " + Describe(items);
    });
}

Outcome Executor::Doing::operator()(const ExpectCount& action) const {
    return Ask(Function::GetAllItems, [&](const Items& items) {
        return action.count == items.size()
                   ? ""
                   : "the list holds " + std::to_string(items.size()) + " items";
    });
}

Outcome Executor::Doing::operator()(const ExpectSelection& action) const {
    return Ask(Function::GetSelection, [&](const Items& items) {
        if (items.size() != 1) {
            return "the reply holds " + Describe(items);
        }
        const Item& item = items.front();
        const bool none = item.id.empty() && item.name.empty();
        if (action.item ? Fits(*action.item, item) : none) {
            return std::string();
        }
        return none ? "nothing is selected" : "selected is " + item.id + '=' + item.name;
    });
}

Outcome Executor::Doing::operator()(const ExpectReply& action) const {
    const auto& reply = partner().lastReply();
    if (!reply) {
        return Failed("no call has been made");
    }
    if (!*reply) {
        return Failed("the call failed: " + reply->error());
    }
    const std::string problem = ProblemOfReply(action, **reply);
    return problem.empty() ? Held() : Failed(problem);
}

Outcome Executor::Doing::operator()(const ExpectError& action) const {
    const auto& reply = partner().lastReply();
    if (!reply) {
        return Failed("no call has been made");
    }
    if (*reply) {
        return Failed("the call was answered with " + Describe(**reply));
    }
    return reply->error().find(action.text) != std::string::npos
               ? Held()
               : Failed("the error is: " + reply->error());
}

}  // namespace applist::sim
