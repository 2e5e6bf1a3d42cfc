// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <utility>

#include "scenario/StatementRunner.h"
#include "scenario/Words.h"

/// Settings, the bus and waits.
namespace applist::sim {
namespace {

constexpr uint32_t MOST_REPETITIONS = 1000;

Action Setting(std::function<void(StatementRunner& runner)> change) {
    return {.run =
                [change = std::move(change)](StatementRunner& runner) {
                    change(runner);
                    return Held();
                },
            .kind = Action::Kind::Setting};
}

Action ReadTimeout(Cursor& cursor) {
    return Setting([time = cursor.Time()](StatementRunner& runner) { runner.SetTimeout(time); });
}

Action ReadNote(Cursor& cursor) {
    Action note = Setting([](StatementRunner&) {});
    // The cursor splits the line into words, so a text of several words is joined again.
    note.comment = cursor.Text("a text");
    while (!cursor.AtEnd()) {
        *note.comment += ' ' + cursor.Text("");
    }
    return note;
}

Action ReadPartner(Cursor& cursor) {
    return Setting([name = cursor.Text("a name")](StatementRunner& runner) { runner.Use(name); });
}

// Sets how one announcement of the acting middleware is made, or all of them.
Action Plan(std::optional<Announcement> announcement, const AnnouncementPlan& step) {
    return Setting([announcement, step](StatementRunner& runner) {
        Middleware& middleware = runner.acting().middleware;
        HandshakePlan plan = middleware.plan();
        if (announcement) {
            plan[*announcement] = step;
        } else {
            plan.steps.fill(step);
        }
        middleware.SetPlan(plan);
    });
}

Action ReadHandshake(Cursor& cursor) {
    enum { NORMAL, MANUAL, SKIP, REPEAT, DELAY };
    const size_t kind = cursor.Choice({"normal", "manual", "skip", "repeat", "delay"});
    if (kind == NORMAL || kind == MANUAL) {
        return Plan(std::nullopt, {.times = kind == NORMAL ? 1U : 0U});
    }
    const Announcement announcement = cursor.OneOf(ANNOUNCEMENTS);
    if (kind == SKIP) {
        return Plan(announcement, {.times = 0});
    }
    return Plan(announcement, kind == DELAY
                                  ? AnnouncementPlan{.delay = cursor.Time()}
                                  : AnnouncementPlan{.times = cursor.Number("the number of times",
                                                                            2, MOST_REPETITIONS)});
}

Action ReadForget(Cursor& cursor) {
    cursor.Choice({"events"});
    return Setting([](StatementRunner& runner) {
        runner.acting().events.clear();
        runner.acting().announcements.clear();
    });
}

Outcome Vanish(StatementRunner& runner) {
    Middleware& middleware = runner.acting().middleware;
    if (!middleware.joined()) {
        return Failed(middleware.name() + " is not on the bus");
    }
    middleware.Vanish();
    return Held();
}

Outcome Restart(StatementRunner& runner) {
    runner.acting().middleware.Vanish();
    return runner.Join();
}

Action ReadAnnounce(Cursor& cursor) {
    const Announcement announcement = cursor.OneOf(ANNOUNCEMENTS);
    return {.run =
                [announcement](StatementRunner& runner) {
                    runner.acting().middleware.link().AnnounceNow(announcement);
                    // The policy of the bus may have denied the announcement.
                    return runner.Join();
                },
            .needs = Action::Needs::Bus,
            // The bus releases the name when busctl exits after the call, which is the
            // announcement.
            .busctl =
                " call org.freedesktop.DBus /org/freedesktop/DBus org.freedesktop.DBus "
                "RequestName su " +
                names::NameOf(names::CLIENT, announcement) + " 4"};
}

Action WaitForConnection(bool connected, std::optional<Duration> within) {
    const auto wait = [connected, within](StatementRunner& runner) {
        const Middleware& middleware = runner.acting().middleware;
        const Duration patience = within.value_or(runner.timeout());
        return runner.Await([&] { return middleware.connected() == connected; }, patience,
                            (connected ? "no application connected within "
                                       : "the application stayed connected for ") +
                                DescribeTime(patience));
    };
    return {.run = wait, .needs = Action::Needs::Bus};
}

Action ReadWait(Cursor& cursor) {
    for (const bool connected : {true, false}) {
        if (cursor.Skip(connected ? "connected" : "disconnected")) {
            return WaitForConnection(connected, cursor.Within());
        }
    }
    return {.run = [time = cursor.Time()](StatementRunner& runner) {
        // The condition never holds, so the time-out is the success of this statement. An interrupt
        // or a lost bus still ends the wait early.
        Outcome waited = runner.Await([] { return false; }, time, "");
        return waited.verdict == Verdict::Failed ? Held() : waited;
    }};
}

}  // namespace

const Rules& StageRules() {
    static const Rules RULES{
        {{"timeout", "T", "Default timeout of waits and expectations"}, ReadTimeout},
        {{"note", "TEXT...", "Print a comment"}, ReadNote},
        {{"partner", "NAME", "Select the acting middleware"}, ReadPartner},
        {{"handshake", "normal | manual | skip STEP | repeat STEP N | delay STEP T",
          "Set how announcements are made"},
         ReadHandshake},
        {{"forget", "events", "Drop the events received so far"}, ReadForget},
        {{"join", "", "Connect to the bus"},
         [](Cursor&) -> Action { return {.run = &StatementRunner::Join}; }},
        {{"vanish", "", "Close the connection to the bus"},
         [](Cursor&) -> Action { return {.run = Vanish}; }},
        {{"restart", "", "Leave and join under a new unique name"},
         [](Cursor&) -> Action { return {.run = Restart}; }},
        {{"announce", "STEP", "Announce syn, syn-ack or ack now"}, ReadAnnounce},
        {{"wait", "connected [within T] | disconnected [within T] | T", "Wait"}, ReadWait},
    };
    return RULES;
}

}  // namespace applist::sim
