// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "scenario/Grammar.h"

namespace applist::sim::grammar {
namespace {

constexpr uint32_t MOST_REPETITIONS = 1000;

Action ReadTimeout(Cursor& cursor) {
    return SetTimeout{cursor.Time()};
}

Action ReadNote(Cursor& cursor) {
    std::string text = cursor.Text("a text");
    while (!cursor.AtEnd()) {
        text += ' ' + cursor.Text("");
    }
    return Note{text};
}

Action ReadPartner(Cursor& cursor) {
    return UsePartner{cursor.Text("a name")};
}

Action ReadHandshake(Cursor& cursor) {
    enum { NORMAL, MANUAL, SKIP, REPEAT, DELAY };
    const size_t kind = cursor.Choice({"normal", "manual", "skip", "repeat", "delay"});
    if (kind == NORMAL || kind == MANUAL) {
        return PlanHandshake{.announcement = std::nullopt, .times = kind == NORMAL ? 1U : 0U};
    }
    PlanHandshake plan{.announcement = cursor.OneOf(ANNOUNCEMENTS)};
    if (kind == SKIP) {
        plan.times = 0;
    } else if (kind == REPEAT) {
        plan.times = cursor.Number("how often", 2, MOST_REPETITIONS);
    } else {
        plan.delay = cursor.Time();
    }
    return plan;
}

Action ReadForget(Cursor& cursor) {
    cursor.Choice({"events"});
    return ForgetEvents{};
}

Action ReadJoin(Cursor& /*cursor*/) {
    return Join{};
}

Action ReadVanish(Cursor& /*cursor*/) {
    return Vanish{};
}

Action ReadRestart(Cursor& /*cursor*/) {
    return Restart{};
}

Action ReadAnnounce(Cursor& cursor) {
    return Announce{cursor.OneOf(ANNOUNCEMENTS)};
}

Action ReadWait(Cursor& cursor) {
    if (cursor.Skip("connected")) {
        return WaitForConnection{true, cursor.Within()};
    }
    if (cursor.Skip("disconnected")) {
        return WaitForConnection{false, cursor.Within()};
    }
    return WaitFor{cursor.Time()};
}

}  // namespace

std::vector<Rule> StageRules() {
    return {
        {{"timeout", "T", "How long waits and expectations have that say nothing"}, &ReadTimeout},
        {{"note", "TEXT...", "Print a comment"}, &ReadNote},
        {{"partner", "NAME", "Who acts from here on"}, &ReadPartner},
        {{"handshake", "normal | manual | skip STEP | repeat STEP N | delay STEP T",
          "How announcements are made"},
         &ReadHandshake},
        {{"forget", "events", "Drop what has come so far"}, &ReadForget},
        {{"join", "", "Connect to the bus"}, &ReadJoin},
        {{"vanish", "", "Leave the bus without a word"}, &ReadVanish},
        {{"restart", "", "Vanish and join under a new unique name"}, &ReadRestart},
        {{"announce", "STEP", "Announce syn, syn-ack or ack now"}, &ReadAnnounce},
        {{"wait", "connected [within T] | disconnected [within T] | T", "Wait"}, &ReadWait},
    };
}

}  // namespace applist::sim::grammar
