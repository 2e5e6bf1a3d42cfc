// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <string>

#include <gmock/gmock.h>

#include "middleware/Report.h"

namespace applist::sim {
namespace {

const std::string APPLICATION = ":1.5";
const SelectedItem WEATHER{Item{"w1", "Weather"}, ""};
const SelectedItem NONE{};
const SelectedItem UNKNOWN{std::nullopt, "gone\naway"};

TEST(TextReports, AreOneLineForEachEvent) {
    const Report report(false, false);
    EXPECT_EQ(report.Connected(APPLICATION), "connected :1.5");
    EXPECT_EQ(report.Disconnected(APPLICATION), "disconnected :1.5");
    EXPECT_EQ(report.Filled(APPLICATION, 8), "filled :1.5 with 8 items");
    EXPECT_EQ(report.Updated(APPLICATION, {1, 2, 3}),
              "updated :1.5: 1 added, 2 removed, 3 renamed");
    EXPECT_EQ(report.Event(APPLICATION, {Event::ItemSelected, 0}, WEATHER),
              "event 2 ItemSelected selection w1\tWeather");
    EXPECT_EQ(report.Event(APPLICATION, {Event::LocalCreated, 0}, NONE),
              "event 4 LocalCreated selection none");
    EXPECT_EQ(report.Event(APPLICATION, {Event::ItemClicked, 2}, UNKNOWN),
              "event 3 ItemClicked with 2 unexpected bytes choice unknown: gone\\x0aaway");
    EXPECT_EQ(report.Event(APPLICATION, {Event::ItemClicked, 0}, WEATHER),
              "event 3 ItemClicked chose w1\tWeather");
    EXPECT_EQ(report.Event(APPLICATION, {static_cast<Event>(77), 3}, NONE),
              "event 77 Unknown with 3 unexpected bytes selection none");
    EXPECT_EQ(report.ItemOfReply({"w\t1", "Weather"}), "w\\x091\tWeather");
}

std::string WithoutColours(std::string text) {
    for (size_t begin = text.find('\033'); begin != std::string::npos; begin = text.find('\033')) {
        text.erase(begin, text.find('m', begin) + 1 - begin);
    }
    return text;
}

TEST(TextReports, HaveTheSameTextWithColours) {
    const Report plain(false, false);
    const Report painted(false, true);
    EXPECT_NE(painted.Connected(APPLICATION), plain.Connected(APPLICATION));
    EXPECT_EQ(WithoutColours(painted.Connected(APPLICATION)), plain.Connected(APPLICATION));
    EXPECT_EQ(WithoutColours(painted.Disconnected(APPLICATION)), plain.Disconnected(APPLICATION));
    EXPECT_EQ(WithoutColours(painted.Filled(APPLICATION, 1)), plain.Filled(APPLICATION, 1));
    EXPECT_EQ(WithoutColours(painted.Updated(APPLICATION, {1, 2, 3})),
              plain.Updated(APPLICATION, {1, 2, 3}));
    EXPECT_EQ(WithoutColours(painted.Event(APPLICATION, {Event::ItemChanged, 0}, UNKNOWN)),
              plain.Event(APPLICATION, {Event::ItemChanged, 0}, UNKNOWN));
}

TEST(JsonReports, AreOneObjectPerLine) {
    const Report report(true, false);
    EXPECT_EQ(report.Connected(APPLICATION), R"({"type":"connected","application":":1.5"})");
    EXPECT_EQ(report.Disconnected(APPLICATION), R"({"type":"disconnected","application":":1.5"})");
    EXPECT_EQ(report.Filled(APPLICATION, 8), R"({"type":"filled","application":":1.5","items":8})");
    EXPECT_EQ(report.Updated(APPLICATION, {1, 2, 3}),
              R"({"type":"updated","application":":1.5","added":1,"removed":2,"renamed":3})");
    EXPECT_EQ(report.Event(APPLICATION, {Event::ItemSelected, 0}, WEATHER),
              R"({"type":"event","application":":1.5","number":2,"name":"ItemSelected",)"
              R"("selection":{"id":"w1","name":"Weather"}})");
    EXPECT_EQ(report.Event(APPLICATION, {Event::LocalCreated, 0}, NONE),
              R"({"type":"event","application":":1.5","number":4,"name":"LocalCreated",)"
              R"("selection":null})");
    EXPECT_EQ(report.Event(APPLICATION, {Event::ItemClicked, 2}, UNKNOWN),
              R"({"type":"event","application":":1.5","number":3,"name":"ItemClicked",)"
              R"("unexpected_bytes":2,"selection":null,"problem":"gone\naway"})");
}

TEST(JsonReports, KeepTheBytesOfTextsThatAreNotUtf8) {
    EXPECT_EQ(Report(true, false).ItemOfReply({"\"1\"", "Citt\xE0"}),
              "{\"type\":\"item\",\"id\":\"\\\"1\\\"\",\"name\":\"Citt\uFFFD\",\"name_hex\":"
              "\"43697474e0\"}");
    EXPECT_EQ(Report(true, false).ItemOfReply({std::string("a\0b", 3), "\u00e0"}),
              "{\"type\":\"item\",\"id\":\"a\\u0000b\",\"id_hex\":\"610062\",\"name\":\"\u00e0\"}");
}

Happening Notified(const Bytes& message) {
    return {.kind = Happening::Kind::Notified, .application = ":1.2", .message = message};
}

TEST(ShellReports, AreForPeople) {
    const Report report(false, false);
    EXPECT_EQ(report.Happened("m\n", Notified({'\1', '\0', '\0', '\0'})),
              "m\\x0a: event 1 ItemChanged");
    EXPECT_EQ(report.Choice("m", ":1.2", {Event::ItemClicked, 0}, WEATHER),
              "m: event 3 ItemClicked chose w1\tWeather");
    EXPECT_EQ(report.Held("clear"), "ok");
    EXPECT_EQ(report.Problem("clear", "no\nreply"), "no\\x0areply");
    EXPECT_EQ(report.Answer("busctl call"), "busctl call");
}

TEST(ShellReports, ArePaintedOnATerminal) {
    const Report report(false, true);
    EXPECT_EQ(report.Held("clear"), "\033[32mok\033[0m");
    EXPECT_EQ(report.Problem("clear", "no reply"), "\033[1;31mno reply\033[0m");
}

TEST(ShellReports, AreForMachines) {
    const Report report(true, false);
    EXPECT_EQ(report.Held("clear"), R"({"type":"ok","statement":"clear"})");
    EXPECT_EQ(report.Problem("clear", "no \"reply\""),
              R"({"type":"problem","statement":"clear","problem":"no \"reply\""})");
    EXPECT_EQ(report.Answer("x"), R"({"type":"answer","note":"x"})");
}

TEST(ShellReports, NameTheMiddleware) {
    const Report report(true, false);
    const auto shown = [&](const Happening& happening) { return report.Happened("m", happening); };
    EXPECT_EQ(shown({.kind = Happening::Kind::Connected, .application = ":1.2"}),
              R"({"type":"connected","application":":1.2","middleware":"m"})");
    EXPECT_EQ(shown(Notified({'\1', '\0', '\0', '\0'})),
              R"({"type":"event","application":":1.2","number":1,)"
              R"("name":"ItemChanged","middleware":"m"})");
    EXPECT_EQ(shown(Notified({'x'})),
              R"({"type":"problem","problem":"notification of 1 bytes without an id",)"
              R"("middleware":"m"})");
    EXPECT_EQ(
        shown({.kind = Happening::Kind::Called, .application = ":1.2", .message = {'\1', '\2'}}),
        R"({"type":"call","application":":1.2","bytes":"0102","middleware":"m"})");
    EXPECT_EQ(shown({.kind = Happening::Kind::Failed, .problem = "cannot"}),
              R"({"type":"problem","problem":"cannot","middleware":"m"})");
    EXPECT_EQ(report.Choice("m", ":1.2", {Event::ItemClicked, 0}, {Item{"a", "A"}, ""}),
              R"({"type":"event","application":":1.2","number":3,"name":"ItemClicked",)"
              R"("selection":{"id":"a","name":"A"},"middleware":"m"})");
}

}  // namespace
}  // namespace applist::sim
