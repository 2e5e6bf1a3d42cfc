// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "scenario/LineInput.h"
#include "scenario/Statement.h"
#include "shared/Output.h"

namespace applist::sim {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;

const std::set<std::string> IDS{"w1", "w2", "needs quotes", "=", "", "#n"};

std::vector<std::string> Complete(std::string_view text) {
    return Completions(text, IDS);
}

TEST(StatementCompletion, OffersStatementsAndTheShellsOwnCommands) {
    EXPECT_THAT(Complete(""), IsSupersetOf({"add", "busctl", "expect", "help", "quit", "wait"}));
    EXPECT_THAT(Complete("se"), IsSupersetOf({"select", "send-hex", "send-short"}));
    EXPECT_THAT(Complete("sele"), ElementsAre("select"));
    EXPECT_THAT(Complete("  sele"), ElementsAre("select"));
    EXPECT_THAT(Complete("nonsense"), IsEmpty());
}

TEST(StatementCompletion, OffersTheWordsThatMayFollow) {
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

TEST(StatementCompletion, OffersIdsThatNeedNoQuotes) {
    EXPECT_THAT(Complete("select "), ElementsAre("w1", "w2"));
    EXPECT_THAT(Complete("remove w2"), ElementsAre("w2"));
    EXPECT_THAT(Complete("expect selection "), ElementsAre("none", "w1", "w2"));
    EXPECT_THAT(Complete("expect list w1 w"), ElementsAre("w1", "w2"));
}

TEST(StatementCompletion, OffersStatementsWhereAStatementIsNamed) {
    EXPECT_THAT(Complete("busctl sele"), ElementsAre("select"));
    EXPECT_THAT(Complete("help expect li"), ElementsAre("list"));
    EXPECT_THAT(Complete("flood 10 a"), IsSupersetOf({"add", "append"}));
    EXPECT_THAT(Complete("busctl select w"), ElementsAre("w1", "w2"));
}

TEST(StatementCompletion, InsertsTheCommonPrefixOfAllCandidates) {
    EXPECT_EQ(CommonRest({"ItemChanged", "ItemClicked"}, "It"), "emC");
    EXPECT_EQ(CommonRest({"select"}, "se"), "lect ");
    EXPECT_EQ(CommonRest({"select"}, "select"), " ");
    EXPECT_EQ(CommonRest({"a", "ab"}, "a"), "");
    EXPECT_EQ(CommonRest({}, "a"), "");
}

TEST(StatementCompletion, FindsTheWordAtTheEnd) {
    EXPECT_EQ(LastWord("add w1"), "w1");
    EXPECT_EQ(LastWord("add\tw1"), "w1");
    EXPECT_EQ(LastWord("add"), "add");
    EXPECT_EQ(LastWord("add "), "");
    EXPECT_EQ(LastWord(""), "");
}

TEST(ScreenRows, CountColumnsAsATerminalDoes) {
    EXPECT_EQ(tools::ColumnsOf(""), 0U);
    EXPECT_EQ(tools::ColumnsOf("add"), 3U);
    EXPECT_EQ(tools::ColumnsOf("Citt\u00e0"), 5U);
    EXPECT_EQ(tools::ColumnsOf("\u65e5\u672c"), 4U);
    EXPECT_EQ(tools::ColumnsOf("e\u0301"), 1U);
    EXPECT_EQ(tools::ColumnsOf("\xFF\xE3"), 2U);
}

TEST(ScreenRows, StartAtTheColumnOfTheText) {
    EXPECT_EQ(RowsAbove("", 10), 0U);
    EXPECT_EQ(RowsAbove("123456789", 10), 0U);
    EXPECT_EQ(RowsAbove("1234567890", 10), 1U);
    EXPECT_EQ(RowsAbove(std::string(25, 'x'), 10), 2U);
}

}  // namespace
}  // namespace applist::sim
