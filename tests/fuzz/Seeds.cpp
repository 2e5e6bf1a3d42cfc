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

enum Action { SELECT = 1, CLEAR = 4, ADD = 5, APPEND = 6, CLICK = 7, REMOVE = 8, MODIFY = 9 };
constexpr int VIEWER = 11;

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

std::vector<std::string> RemoteProtocolSeeds() {
    const std::string a = Item("Alpha", "a");
    const std::string b = Item("Beta", "b");
    const std::string c = Item("Gamma", "c");
    const std::string three = SessionStep(ADD, a + b + c);
    return {
        three + SessionStep(SELECT, b) + SessionStep(REMOVE, b) + SessionStep(CLEAR, ""),
        three + SessionStep(MODIFY, a + Item("Delta", "d")) + SessionStep(MODIFY, b + b),
        three + SessionStep(SELECT, "") + SessionStep(APPEND, b) + SessionStep(REMOVE, b) +
            SessionStep(REMOVE, b),
        SessionStep(ADD, a + a) + SessionStep(REMOVE, a) + SessionStep(ADD, a) +
            SessionStep(REMOVE, a) + SessionStep(ADD, b),
        SessionStep(APPEND, "") + SessionStep(APPEND, "") + SessionStep(REMOVE, "") +
            SessionStep(MODIFY, ""),
        SessionStep(ADD, a + b.substr(0, 9)) + SessionStep(VIEWER, "") + SessionStep(CLICK, "") +
            SessionStep(0, a) + SessionStep(10, a),
        three + SessionStep(VIEWER + 1, "") + SessionStep(REMOVE, c) + SessionStep(VIEWER + 2, ""),
    };
}

}  // namespace applist::test
