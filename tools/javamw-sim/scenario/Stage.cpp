// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "scenario/StatementRunner.h"
#include "scenario/Words.h"

/// Settings, the bus and waits.
namespace applist::sim {
namespace {

constexpr uint32_t MOST_REPETITIONS = 1000;

std::string ReadText(Cursor& cursor) {
    // The cursor splits the line into words, so a text of several words is joined again.
    std::string text = cursor.Text("a text");
    while (!cursor.AtEnd()) {
        text += ' ' + cursor.Text("");
    }
    return text;
}

Action ReadHandshake(Cursor& cursor) {
    enum { NORMAL, MANUAL, SKIP, REPEAT, DELAY };
    const size_t kind = cursor.Choice({"normal", "manual", "skip", "repeat", "delay"});
    // Without a named step the plan holds for all three announcements.
    if (kind == NORMAL || kind == MANUAL) {
        return PlanHandshake{.announcement = std::nullopt, .times = kind == NORMAL ? 1U : 0U};
    }
    PlanHandshake plan{.announcement = cursor.OneOf(ANNOUNCEMENTS)};
    if (kind == SKIP) {
        plan.times = 0;
    } else if (kind == REPEAT) {
        plan.times = cursor.Number("the number of times", 2, MOST_REPETITIONS);
    } else {
        plan.delay = cursor.Time();
    }
    return plan;
}

Action ReadForget(Cursor& cursor) {
    cursor.Choice({"events"});
    return ForgetEvents{};
}

Action ReadWait(Cursor& cursor) {
    for (const bool connected : {true, false}) {
        if (cursor.Skip(connected ? "connected" : "disconnected")) {
            return WaitForConnection{connected, cursor.Within()};
        }
    }
    return WaitFor{cursor.Time()};
}

}  // namespace

const Rules& StageRules() {
    static const Rules RULES{
        {{"timeout", "T", "Default timeout of waits and expectations"},
         [](Cursor& cursor) -> Action { return SetTimeout{cursor.Time()}; }},
        {{"note", "TEXT...", "Print a comment"},
         [](Cursor& cursor) -> Action { return Note{ReadText(cursor)}; }},
        {{"partner", "NAME", "Select the acting middleware"},
         [](Cursor& cursor) -> Action { return UseMiddleware{cursor.Text("a name")}; }},
        {{"handshake", "normal | manual | skip STEP | repeat STEP N | delay STEP T",
          "Set how announcements are made"},
         ReadHandshake},
        {{"forget", "events", "Drop the events received so far"}, ReadForget},
        {{"join", "", "Connect to the bus"}, [](Cursor&) -> Action { return Join{}; }},
        {{"vanish", "", "Close the connection to the bus"},
         [](Cursor&) -> Action { return Vanish{}; }},
        {{"restart", "", "Leave and join under a new unique name"},
         [](Cursor&) -> Action { return Restart{}; }},
        {{"announce", "STEP", "Announce syn, syn-ack or ack now"},
         [](Cursor& cursor) -> Action { return Announce{cursor.OneOf(ANNOUNCEMENTS)}; }},
        {{"wait", "connected [within T] | disconnected [within T] | T", "Wait"}, ReadWait},
    };
    return RULES;
}

Outcome SetTimeout::Run(StatementRunner& runner) const {
    runner.SetTimeout(duration);
    return Held();
}

Outcome Note::Run(StatementRunner& /*runner*/) const {
    return Held();
}

Outcome UseMiddleware::Run(StatementRunner& runner) const {
    runner.Use(name);
    return Held();
}

Outcome PlanHandshake::Run(StatementRunner& runner) const {
    Middleware& middleware = runner.acting().middleware;
    HandshakePlan plan = middleware.plan();
    const AnnouncementPlan step{times, delay};
    if (announcement) {
        plan[*announcement] = step;
    } else {
        plan.steps.fill(step);
    }
    middleware.SetPlan(plan);
    return Held();
}

Outcome ForgetEvents::Run(StatementRunner& runner) const {
    runner.acting().events.clear();
    runner.acting().announcements.clear();
    return Held();
}

Outcome Join::Run(StatementRunner& runner) const {
    return runner.Join();
}

Outcome Vanish::Run(StatementRunner& runner) const {
    Middleware& middleware = runner.acting().middleware;
    if (!middleware.joined()) {
        return Failed(middleware.name() + " is not on the bus");
    }
    middleware.Vanish();
    return Held();
}

Outcome Restart::Run(StatementRunner& runner) const {
    runner.acting().middleware.Vanish();
    return runner.Join();
}

Outcome Announce::Run(StatementRunner& runner) const {
    Outcome joined = runner.Join();
    if (joined.held()) {
        runner.acting().middleware.link().AnnounceNow(announcement);
        joined = runner.Join();  // The policy of the bus may have denied the announcement.
    }
    return joined;
}

Outcome WaitFor::Run(StatementRunner& runner) const {
    // The condition never holds, so the time-out is the success of this statement. An interrupt or
    // a lost bus still ends the wait early.
    Outcome waited = runner.Await([] { return false; }, duration, "");
    return waited.verdict == Verdict::Failed ? Held() : waited;
}

Outcome WaitForConnection::Run(StatementRunner& runner) const {
    Outcome joined = runner.Join();
    if (!joined.held()) {
        return joined;
    }
    const Middleware& middleware = runner.acting().middleware;
    const Duration patience = within.value_or(runner.timeout());
    return runner.Await(
        [&] { return middleware.connected() == connected; }, patience,
        (connected ? "no application connected within " : "the application stayed connected for ") +
            DescribeTime(patience));
}

}  // namespace applist::sim
