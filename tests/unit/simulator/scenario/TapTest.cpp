// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "scenario/ScenarioRun.h"

namespace applist::sim {
namespace {

using testing::ElementsAre;

class TapTest : public testing::Test {
protected:
    Tap Make(bool colours = false) {
        return {[this](const std::string& line) { m_lines.push_back(line); }, colours};
    }

    std::vector<std::string> m_lines;
};

TEST_F(TapTest, BeginsWithVersionAndPlan) {
    Make().Plan(3);
    EXPECT_THAT(m_lines, ElementsAre("TAP version 13", "1..3"));
}

TEST_F(TapTest, NumbersItsPoints) {
    Tap tap = Make();
    tap.Pass("one");
    tap.Skip("two", "x:1 failed");
    tap.Fail("three", "x:3", "why", {});
    EXPECT_THAT(m_lines,
                ElementsAre("ok 1 - one", "ok 2 - two # SKIP x:1 failed", "not ok 3 - three",
                            "  ---", "  at: \"x:3\"", "  problem: \"why\"", "  ..."));
}

TEST_F(TapTest, PrintsTheObservedEvents) {
    Make().Fail("it", "x:3", "why", {"a: connected", "a: event"});
    EXPECT_THAT(m_lines,
                ElementsAre("not ok 1 - it", "  ---", "  at: \"x:3\"", "  problem: \"why\"",
                            "  seen:", "    - \"a: connected\"", "    - \"a: event\"", "  ..."));
}

TEST_F(TapTest, EscapesTextsThatLookLikeDirectivesOrLines) {
    Tap tap = Make();
    tap.Pass("add a=# TODO\n\\");
    tap.Comment("1\n2");
    tap.BailOut("a\nb");
    tap.Fail("it", "\"", "say \"x\"\n", {});
    EXPECT_EQ(m_lines.at(0), "ok 1 - add a=\\# TODO\\x0a\\\\");
    EXPECT_EQ(m_lines.at(1), "# 1\\x0a2");
    EXPECT_EQ(m_lines.at(2), "Bail out! a\\x0ab");
    EXPECT_EQ(m_lines.at(5), "  at: \"\\\"\"");
    EXPECT_EQ(m_lines.at(6), "  problem: \"say \\\"x\\\"\\x0a\"");
}

TEST_F(TapTest, PaintsResultsWhenAsked) {
    Tap tap = Make(true);
    tap.Pass("one");
    tap.Fail("two", "x:1", "why", {});
    EXPECT_EQ(m_lines.at(0), "\033[32mok\033[0m 1 - one");
    EXPECT_EQ(m_lines.at(1), "\033[1;31mnot ok\033[0m 2 - two");
}

}  // namespace
}  // namespace applist::sim
