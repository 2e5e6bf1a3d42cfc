// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// applist-headless as a program: statements, state, errors and exit statuses.
#include <gmock/gmock.h>

#include "bus/simulator/Simulation.h"

namespace applist::test {
namespace {

using testing::HasSubstr;
using testing::Not;

class Headless : public testing::Test {
protected:
    /// Starts javamw-sim with the items a, b and c.
    Simulation::Process Serve() {
        return m_set.Start({"serve", "--items", m_set.File("items", "a\tA\nb\tB\nc\tC\n")});
    }

    /// Runs the lines to the end of the program and returns its exit status.
    int Run(const std::string& lines, std::vector<std::string> options = {}) {
        options.insert(options.begin(), BuiltProgram("applist-headless"));
        options.push_back(m_set.File("lines", lines));
        ChildProcess program(options, m_set.bus().Environment());
        const int status = program.WaitForExit().value_or(-1);
        m_output = program.Output();
        m_errors = program.Errors();
        return status;
    }

    Simulation m_set;
    std::string m_output;
    std::string m_errors;
};

TEST_F(Headless, MovesTheFocusAndReportsTheChoice) {
    const auto serve = Serve();
    EXPECT_EQ(Run("await items 3\ndown\nstate\nup\nup\nstate\nright\ndown\nok\nstate\n"), 0);
    EXPECT_THAT(m_output, HasSubstr(R"("selected":"b","clicked":null)"));
    EXPECT_THAT(m_output, HasSubstr(R"("selected":"c","clicked":null)"));
    EXPECT_THAT(m_output, HasSubstr(R"("ending":true,"ended_by":"ok")"));
    EXPECT_THAT(m_output, HasSubstr(R"("selected":"b","clicked":"b")"));
    EXPECT_TRUE(serve->WaitForText("event 3 ItemClicked chose b\tB\n")) << serve->Output();
}

TEST_F(Headless, PrintsItsStateAsOneLine) {
    const auto serve = Serve();
    EXPECT_EQ(Run("await items 3\nstate\n"), 0);
    EXPECT_THAT(m_output,
                testing::MatchesRegex(
                    R"(\{"running":true,"ending":false,"ended_by":null,"name":":[0-9.]+",)"
                    R"("partners":\[":[0-9.]+"\],"items":\[\{"id":"a","name":"A"\},.*\],)"
                    R"("selected":"a","clicked":null,"calls":[0-9]+,"events":3,"time":0.0\})"
                    "\n"));
}

TEST_F(Headless, ClosesAfter65SecondsOfItsOwnClock) {
    EXPECT_EQ(Run("wait 64s\nup\nwait 64s\nstate\nwait 1s\nstate\nwait 500ms\nstate\n"), 0);
    EXPECT_THAT(m_output, HasSubstr(R"("running":true,"ending":false,"ended_by":null)"));
    EXPECT_THAT(m_output, HasSubstr(R"("running":true,"ending":true,"ended_by":"time limit")"));
    EXPECT_THAT(m_output, HasSubstr(R"("running":false,"ending":false,"ended_by":"time limit")"));
}

TEST_F(Headless, EndsByBackExitAndASecondStart) {
    for (const std::string end : {"back", "exit", "second start"}) {
        EXPECT_EQ(Run(end + "\nawait ended\nstate\n"), 0);
        EXPECT_THAT(m_output, HasSubstr(R"("running":false,"ending":false,"ended_by":")" + end));
    }
}

TEST_F(Headless, EndsWithTheApplicationIfAskedTo) {
    EXPECT_EQ(Run("die\nstate\n", {"--once"}), 0);
    EXPECT_EQ(m_output, "");
}

TEST_F(Headless, IgnoresKeysWhileItEnds) {
    const auto serve = Serve();
    EXPECT_EQ(Run("await items 3\nback\ndown\nok\nstate\n"), 0);
    EXPECT_THAT(m_output, HasSubstr(R"("ended_by":"back")"));
    EXPECT_THAT(m_output, HasSubstr(R"("selected":"a","clicked":null)"));
}

TEST_F(Headless, LeavesTheBusAtOnceWhenItDies) {
    const auto serve = Serve();
    EXPECT_EQ(Run("await items 3\ndie\nstate\n"), 0);
    EXPECT_THAT(m_output, HasSubstr(R"("running":false,"ending":false,"ended_by":"die")"));
    EXPECT_TRUE(serve->WaitForText("disconnected"));
    EXPECT_EQ(m_errors, "");
}

TEST_F(Headless, KeepsTheFocusWhenTheSelectionIsCleared) {
    const auto application = m_set.StartList();
    ASSERT_EQ(m_set.Run({"call", "AddItems", "a=A", "b=B", "c=C"}), 0);
    application->Type("down");
    ASSERT_EQ(m_set.Run({"call", "SetSelection", "="}), 0) << m_set.errors();
    application->Type("down");
    application->Type("state");
    EXPECT_TRUE(application->WaitForText(R"("selected":"c")")) << application->Output();
}

TEST_F(Headless, ReportsWrongLinesAndRunsTheOthers) {
    EXPECT_EQ(Run("# a comment\n\nfly\nwait 5\nback now\nawait items x\nawait item\nstate\n"), 2);
    EXPECT_THAT(m_output, HasSubstr("\"running\":true"));
    for (const std::string line :
         {"lines:3: unknown statement 'fly'; known: up, down,", "lines:4: 'wait' takes a time",
          "lines:5: 'back' takes no argument, not 'now'", "lines:6: 'await items' takes a number",
          "lines:7: 'await item' takes the id of an item"}) {
        EXPECT_THAT(m_errors, HasSubstr("applist-headless: " + m_set.Path(line)));
    }
}

TEST_F(Headless, ReportsALineOfAnyBytes) {
    EXPECT_EQ(Run({"\xFF\0x\n", 4}), 2);
    EXPECT_THAT(m_errors, HasSubstr("lines:1: unknown statement '\uFFFD\uFFFDx'; known: "));
}

TEST_F(Headless, RunsALastLineWithoutItsEnd) {
    EXPECT_EQ(Run("state"), 0);
    EXPECT_THAT(m_output, HasSubstr("\"running\":true"));
}

TEST_F(Headless, ReportsStatementsAfterItsEnd) {
    EXPECT_EQ(Run("die\nok\n"), 2);
    EXPECT_THAT(m_errors, HasSubstr("lines:2: the application has ended\n"));
}

TEST_F(Headless, FailsWhenAnAwaitTimesOut) {
    EXPECT_EQ(Run("await items 1\nstate\n", {"--timeout=0.05"}), 1);
    EXPECT_THAT(m_errors, HasSubstr("lines:1: 'await items 1' was not reached within 0.05 s\n"));
    EXPECT_EQ(m_output, "");
}

TEST_F(Headless, RefusesWrongUsageAndAnUnreadableFile) {
    EXPECT_EQ(Run("", {"--bogus"}), 2);
    EXPECT_THAT(m_errors, HasSubstr("--bogus; see applist-headless --help\n"));
    EXPECT_EQ(Run("", {m_set.Path("missing")}), 2);
    EXPECT_EQ(Run("", {"--timeout=0"}), 2);
    for (const auto& [file, reason] :
         {std::pair(m_set.Path("missing"), "No such file or directory"),
          std::pair(m_set.Path("."), "Is a directory")}) {
        ChildProcess program({BuiltProgram("applist-headless"), file}, m_set.bus().Environment());
        EXPECT_EQ(program.WaitForExit(), 2);
        EXPECT_EQ(program.Errors(), "applist-headless: " + file + ": " + reason + "\n");
    }
}

TEST_F(Headless, QuotesAWrongLineWithoutItsControlBytes) {
    EXPECT_EQ(Run("\x1b[2Jok\n"), 2);
    EXPECT_THAT(m_errors, HasSubstr("lines:1: unknown statement '\\x1b[2Jok'; known: "));
}

TEST_F(Headless, FailsWithoutABusAndWhenItCloses) {
    EXPECT_EQ(Run("", {"--address=unix:path=" + m_set.Path("no-bus")}), 3);
    const auto application = m_set.StartList();
    m_set.bus().Stop();
    EXPECT_EQ(application->WaitForExit(), 3);
    EXPECT_THAT(application->Errors(), HasSubstr("applist-headless: the system bus has closed\n"));
}

TEST_F(Headless, LinksNoToolkit) {
    ChildProcess readelf({"readelf", "-d", BuiltProgram("applist-headless")});
    ASSERT_EQ(readelf.WaitForExit(), 0);
    EXPECT_THAT(readelf.Output(), HasSubstr("libgio"));
    for (const char* library : {"libelementary", "libecore", "libeina", "libevas", "libX11"}) {
        EXPECT_THAT(readelf.Output(), Not(HasSubstr(library)));
    }
}

}  // namespace
}  // namespace applist::test
