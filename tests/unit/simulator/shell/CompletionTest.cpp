// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "shell/Completion.h"
#include "shell/EditorInput.h"
#include "shell/ShellOutput.h"

namespace applist::sim {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;

const std::set<std::string> IDS{"w1", "w2", "needs quotes", "=", "", "#n"};

std::vector<std::string> Complete(std::string_view text) {
    return Completions(text, IDS);
}

TEST(Completion, OffersStatementsAndTheShellsOwnCommands) {
    EXPECT_THAT(Complete(""), IsSupersetOf({"add", "busctl", "expect", "help", "quit", "wait"}));
    EXPECT_THAT(Complete("se"), IsSupersetOf({"select", "send-hex", "send-short"}));
    EXPECT_THAT(Complete("sele"), ElementsAre("select"));
    EXPECT_THAT(Complete("  sele"), ElementsAre("select"));
    EXPECT_THAT(Complete("nonsense"), IsEmpty());
}

TEST(Completion, OffersTheWordsThatMayFollow) {
    EXPECT_THAT(Complete("expect "), ElementsAre("announcement", "count", "error", "event", "list",
                                                 "no", "reply", "selection"));
    EXPECT_THAT(Complete("expect event Item"),
                ElementsAre("ItemChanged", "ItemClicked", "ItemSelected"));
    EXPECT_THAT(Complete("expect event ItemChanged w"), ElementsAre("within"));
    EXPECT_THAT(Complete("wait "), ElementsAre("connected", "disconnected", "within"));
    EXPECT_THAT(Complete("announce s"), ElementsAre("syn", "syn-ack"));
    EXPECT_THAT(Complete("call Get"), ElementsAre("GetAllItems", "GetSelection"));
    EXPECT_THAT(Complete("add x=X "), IsEmpty());
    EXPECT_THAT(Complete("nonsense "), IsEmpty());
}

TEST(Completion, OffersIdsThatNeedNoQuotes) {
    EXPECT_THAT(Complete("select "), ElementsAre("w1", "w2"));
    EXPECT_THAT(Complete("remove w2"), ElementsAre("w2"));
    EXPECT_THAT(Complete("expect selection "), ElementsAre("none", "w1", "w2"));
    EXPECT_THAT(Complete("expect list w1 w"), ElementsAre("w1", "w2"));
}

TEST(Completion, OffersStatementsWhereAStatementIsNamed) {
    EXPECT_THAT(Complete("busctl sele"), ElementsAre("select"));
    EXPECT_THAT(Complete("help expect li"), ElementsAre("list"));
    EXPECT_THAT(Complete("flood 10 a"), IsSupersetOf({"add", "append"}));
    EXPECT_THAT(Complete("busctl select w"), ElementsAre("w1", "w2"));
}

TEST(Completion, InsertsTheCommonPrefixOfAllCandidates) {
    EXPECT_EQ(CommonRest({"ItemChanged", "ItemClicked"}, "It"), "emC");
    EXPECT_EQ(CommonRest({"select"}, "se"), "lect ");
    EXPECT_EQ(CommonRest({"select"}, "select"), " ");
    EXPECT_EQ(CommonRest({"a", "ab"}, "a"), "");
    EXPECT_EQ(CommonRest({}, "a"), "");
}

TEST(Completion, FindsTheWordAtTheEnd) {
    EXPECT_EQ(LastWord("add w1"), "w1");
    EXPECT_EQ(LastWord("add\tw1"), "w1");
    EXPECT_EQ(LastWord("add"), "add");
    EXPECT_EQ(LastWord("add "), "");
    EXPECT_EQ(LastWord(""), "");
}

TEST(ScreenRows, CountColumnsAsATerminalDoes) {
    EXPECT_EQ(ColumnsOf(""), 0U);
    EXPECT_EQ(ColumnsOf("add"), 3U);
    EXPECT_EQ(ColumnsOf("Citt\u00e0"), 5U);
    EXPECT_EQ(ColumnsOf("\u65e5\u672c"), 4U);
    EXPECT_EQ(ColumnsOf("e\u0301"), 1U);
    EXPECT_EQ(ColumnsOf("\xFF\xE3"), 2U);
}

TEST(ScreenRows, StartAtTheColumnOfTheText) {
    EXPECT_EQ(RowsAbove("", 10), 0U);
    EXPECT_EQ(RowsAbove("123456789", 10), 0U);
    EXPECT_EQ(RowsAbove("1234567890", 10), 1U);
    EXPECT_EQ(RowsAbove(std::string(25, 'x'), 10), 2U);
}

const Bytes EVENT_1{'\1', '\0', '\0', '\0'};

Happening Notified(const Bytes& message) {
    return {.kind = Happening::Kind::Notified, .application = ":1.2", .message = message};
}

TEST(ShellOutput, IsForPeople) {
    const ShellOutput output(false, false);
    EXPECT_EQ(output.Show("middleware", Notified(EVENT_1)), "middleware: event 1 ItemChanged");
    EXPECT_EQ(output.Held("clear"), "ok");
    EXPECT_EQ(output.Problem("clear", "no\nreply"), "no\\x0areply");
    EXPECT_THAT(output.Reply({{"a", "A"}, {"b", "B"}}), ElementsAre("a\tA", "b\tB"));
    EXPECT_EQ(output.Answer("busctl call"), "busctl call");
}

TEST(ShellOutput, IsPaintedOnATerminal) {
    const ShellOutput output(false, true);
    EXPECT_EQ(output.Held("clear"), "\033[32mok\033[0m");
    EXPECT_EQ(output.Problem("clear", "no reply"), "\033[1;31mno reply\033[0m");
}

TEST(ShellOutput, IsForMachines) {
    const ShellOutput output(true, false);
    EXPECT_EQ(output.Held("clear"), R"({"type":"ok","statement":"clear"})");
    EXPECT_EQ(output.Problem("clear", "no \"reply\""),
              R"({"type":"problem","statement":"clear","problem":"no \"reply\""})");
    EXPECT_THAT(output.Reply({{"a", "A"}}), ElementsAre(R"({"type":"item","id":"a","name":"A"})"));
    EXPECT_EQ(output.Answer("x"), R"({"type":"answer","note":"x"})");
}

TEST(ShellOutput, NamesTheMiddlewareOfWhatHappens) {
    const ShellOutput output(true, false);
    const auto shown = [&](const Happening& happening) { return output.Show("m", happening); };
    EXPECT_EQ(shown({.kind = Happening::Kind::Connected, .application = ":1.2"}),
              R"({"type":"connected","application":":1.2","middleware":"m"})");
    EXPECT_EQ(shown({.kind = Happening::Kind::Disconnected, .application = ":1.2"}),
              R"({"type":"disconnected","application":":1.2","middleware":"m"})");
    EXPECT_EQ(shown(Notified(EVENT_1)), R"({"type":"event","application":":1.2","number":1,)"
                                        R"("name":"ItemChanged","middleware":"m"})");
    EXPECT_EQ(shown(Notified({'x'})),
              R"({"type":"problem","problem":"notification of 1 bytes without an id",)"
              R"("middleware":"m"})");
    EXPECT_EQ(
        shown({.kind = Happening::Kind::Called, .application = ":1.2", .message = {'\1', '\2'}}),
        R"({"type":"call","application":":1.2","bytes":"0102","middleware":"m"})");
    EXPECT_EQ(shown({.kind = Happening::Kind::Failed, .problem = "cannot"}),
              R"({"type":"problem","problem":"cannot","middleware":"m"})");
    EXPECT_EQ(output.Choice("m", ":1.2", {Event::ItemClicked, 0}, {Item{"a", "A"}, ""}),
              R"({"type":"event","application":":1.2","number":3,"name":"ItemClicked",)"
              R"("selection":{"id":"a","name":"A"},"middleware":"m"})");
}

}  // namespace
}  // namespace applist::sim
