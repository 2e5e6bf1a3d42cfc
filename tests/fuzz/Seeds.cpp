// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <sstream>

#include "applist/DefaultAppListItem.h"
#include "applist/RemoteAppListItem.h"
#include "fuzz/Properties.h"

namespace applist::test {
namespace {

std::string Item(const std::string& name, const std::string& id) {
    DefaultAppListItem item(name, id);
    std::ostringstream out;
    out << RemoteAppListItem(item);
    return out.str();
}

enum Action {
    SELECT = 1,
    CLEAR = 4,
    ADD = 5,
    APPEND = 6,
    CLICK = 7,
    REMOVE = 8,
    MODIFY = 9,
    KEY = 11,
    MOVE_FOCUS,
    PRESS_OK,
    WAIT,
    HANDSHAKE,
    LOSE_REPLY,
    OWN_NAME,
    SIGNAL,
    FRAME,
    LAUNCH,
    PAUSE,
    TERMINATE,
};

std::string Step(int action, int operand) {
    return ProgramStep(action, std::string(1, static_cast<char>(operand)));
}

/// Announces and delivers a step of the handshake.
std::string Announced(int partner, int step) {
    const int announce = 1 + 14 * partner + 4 * step;
    return Step(HANDSHAKE, announce) + Step(HANDSHAKE, announce + 1);
}

/// The partner leaves the bus, and the program is told so.
std::string Gone(int partner) {
    return Step(HANDSHAKE, 13 + 14 * partner) + Step(HANDSHAKE, 14 + 14 * partner);
}

}  // namespace

std::vector<std::string> ItemStreamSeeds() {
    const std::string weather = Item("Weather", "w1");
    return {
        "",
        weather,
        weather + Item("", "") + Item(std::string("a\0b", 3), "\xFF"),
        "\xFF\xFF\xFF\xFFWeather",
        std::string("\x01\x00\x00\x00W\xFF\xFF\xFF\x7F", 9) + weather,
        Item(std::string(5000, 'n'), std::string(300, 'i')),
    };
}

std::vector<std::string> AdapterFrameSeeds() {
    return {
        "",
        std::string("\xD0\x07\x00", 3),
        std::string("\xD0\x07\x00\x00", 4),
        std::string("\x01\x02\x03\xD0\x07\x00\x00", 7),
        std::string("\x00\x00\x00\x80", 4),
        Item("Weather", "w1") + "\xFF\xFF\xFF\xFF",
    };
}

std::vector<std::string> WholeProgramSeeds() {
    const std::string a = Item("Alpha", "a");
    const std::string b = Item("Beta", "b");
    const std::string c = Item("Gamma", "c");
    const std::string three = ProgramStep(ADD, a + b + c);
    return {
        three + ProgramStep(SELECT, b) + ProgramStep(REMOVE, b) + ProgramStep(CLEAR, ""),
        three + ProgramStep(MODIFY, a + Item("Delta", "d")) + ProgramStep(MODIFY, b + b),
        three + ProgramStep(SELECT, "") + ProgramStep(APPEND, b) + ProgramStep(REMOVE, b) +
            ProgramStep(REMOVE, b),
        ProgramStep(ADD, a + a) + ProgramStep(REMOVE, a) + ProgramStep(ADD, a) +
            ProgramStep(REMOVE, a) + ProgramStep(ADD, b),
        ProgramStep(APPEND, "") + ProgramStep(APPEND, "") + ProgramStep(REMOVE, "") +
            ProgramStep(MODIFY, ""),
        ProgramStep(ADD, a + b.substr(0, 9)) + Step(PRESS_OK, 1) + ProgramStep(CLICK, "") +
            ProgramStep(0, a) + ProgramStep(10, a),
        three + Step(MOVE_FOCUS, 2) + ProgramStep(REMOVE, c) + Step(PRESS_OK, 0),
        Announced(0, 0) + Announced(0, 2) + three + Announced(1, 1) + Step(MOVE_FOCUS, 1) +
            Gone(0) + Step(KEY, 2) + Step(KEY, 3) + Announced(0, 0) + Step(PRESS_OK, 2),
        ProgramStep(LOSE_REPLY, "") + Announced(0, 0) + Announced(0, 2) + Step(HANDSHAKE, 0) +
            Announced(1, 0) + ProgramStep(SIGNAL, "\1abcd") + Step(OWN_NAME, 1) + Gone(1),
        three + Step(KEY, 0) + Step(WAIT, 64) + Step(KEY, 1) + Step(WAIT, 64) + Step(WAIT, 1) +
            Step(KEY, 5) + ProgramStep(LAUNCH, "") + ProgramStep(PAUSE, "") +
            ProgramStep(LAUNCH, ""),
        Announced(0, 1) + three + ProgramStep(TERMINATE, "") + Announced(0, 0) + Step(KEY, 2) +
            ProgramStep(FRAME, std::string("\0\xD2\x07\0\0", 5)) + ProgramStep(ADD, a),
    };
}

}  // namespace applist::test
