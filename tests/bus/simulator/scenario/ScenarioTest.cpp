// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Scenarios with the application's list on a real bus.
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "bus/simulator/Simulation.h"

namespace applist::test {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class Scenario : public testing::Test {
protected:
    Simulation::Process Start(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), "run");
        return m_set.Start(std::move(arguments));
    }

    /// Plays text to its end. Returns the output without the name of the file.
    std::string Play(const std::string& text, int status,
                     const std::vector<std::string>& options = {}) {
        std::vector<std::string> arguments = options;
        arguments.push_back(m_set.File("it", text));
        const auto run = Start(arguments);
        EXPECT_EQ(run->WaitForExit(), status) << run->Output() << run->Errors();
        m_errors = run->Errors();
        return WithoutFolder(run->Output());
    }

    std::string WithoutFolder(std::string text) const {
        const std::string folder = m_set.Path("");
        for (size_t at = text.find(folder); at != std::string::npos; at = text.find(folder)) {
            text.erase(at, folder.size());
        }
        return text;
    }

    Simulation m_set;
    std::string m_errors;
};

TEST_F(Scenario, PassesWhenEveryExpectationHolds) {
    const auto list = m_set.StartList();
    EXPECT_EQ(Play("# a comment\nwait connected\nadd a=Alpha\nexpect list a=Alpha\n", SUCCESS),
              "TAP version 13\n"
              "1..3\n"
              "ok 1 - it:2 wait connected\n"
              "ok 2 - it:3 add a=Alpha\n"
              "ok 3 - it:4 expect list a=Alpha\n");
    EXPECT_EQ(m_errors, "");
}

TEST_F(Scenario, ReportsLineAndReasonOfAFailureAndSkipsTheRest) {
    const auto list = m_set.StartList();
    EXPECT_EQ(Play("wait connected\nadd a=Alpha\nexpect list b\nclear\nnote over\n", FAILED),
              "TAP version 13\n"
              "1..4\n"
              "ok 1 - it:1 wait connected\n"
              "ok 2 - it:2 add a=Alpha\n"
              "not ok 3 - it:3 expect list b\n"
              "  ---\n"
              "  at: \"it:3\"\n"
              "  problem: \"the list holds a=Alpha (1)\"\n"
              "  ...\n"
              "ok 4 - it:4 clear # SKIP it:3 failed\n");
}

TEST_F(Scenario, ContinuesAfterAFailureWhenAsked) {
    const auto list = m_set.StartList();
    const std::string output =
        Play("wait connected\nexpect count 3\nexpect count 0\n", FAILED, {"--keep-going"});
    EXPECT_THAT(output, HasSubstr("not ok 2 - it:2 expect count 3\n"));
    EXPECT_THAT(output, EndsWith("ok 3 - it:3 expect count 0\n"));
}

TEST_F(Scenario, RunsNothingIfAnyFileHasAnError) {
    const std::string good = m_set.File("good", "wait 1ms\n");
    const std::string bad = m_set.File("bad", "clear\nadd a\n\nwait long\n");
    const auto run = Start({good, bad, m_set.Path("none"), m_set.File("ugly", "\x01")});
    EXPECT_EQ(run->WaitForExit(), WRONG_USAGE);
    EXPECT_EQ(run->Output(), "");
    EXPECT_EQ(WithoutFolder(run->Errors()),
              "javamw-sim: bad:2:5: 'a' lacks an unquoted '=' between id and name\n"
              "javamw-sim: bad:4:6: a time must have the form 200ms, 5s or 1min, up to a day, not "
              "'long'\n"
              "javamw-sim: none: no such file\n"
              "javamw-sim: ugly:1:1: control byte; write it as \\xHH in quotes\n");
}

TEST_F(Scenario, IsOnlyCheckedWhenAsked) {
    EXPECT_EQ(Play("wait connected\n", SUCCESS, {"--check"}), "");
    EXPECT_EQ(Play("wait\n", WRONG_USAGE, {"--check"}), "");
    EXPECT_THAT(m_errors, EndsWith("it:1:5: a time is missing\n"));
}

TEST_F(Scenario, IsReadFromStandardInput) {
    ChildProcess shell({"sh", "-c", "echo 'wait 1ms' | \"$0\" run -", BuiltProgram("javamw-sim")});
    EXPECT_EQ(shell.WaitForExit(), SUCCESS);
    EXPECT_EQ(shell.Output(), "TAP version 13\n1..1\nok 1 - -:1 wait 1ms\n");
}

TEST_F(Scenario, NumbersItsPointsAcrossAllFiles) {
    const auto list = m_set.StartList();
    const auto run = Start({m_set.File("first", "wait connected\nadd a=A\n"),
                            m_set.File("second", "wait connected\n")});
    EXPECT_EQ(run->WaitForExit(), SUCCESS);
    EXPECT_THAT(run->Output(), StartsWith("TAP version 13\n1..3\n"));
    EXPECT_THAT(WithoutFolder(run->Output()), EndsWith("ok 3 - second:1 wait connected\n"));
}

TEST_F(Scenario, FailsWithoutAnApplication) {
    EXPECT_THAT(Play("wait connected within 1ms\n", FAILED),
                HasSubstr("problem: \"no application connected within 1 ms\""));
    EXPECT_THAT(Play("timeout 1ms\nadd a=A\n", FAILED),
                HasSubstr("no application has announced itself"));
}

TEST_F(Scenario, NoticesThatTheApplicationLeaves) {
    const auto list = m_set.StartList();
    const auto run = Start({m_set.File("it", "wait connected\nwait disconnected within 1min\n")});
    ASSERT_TRUE(run->WaitForText("ok 1 - "));
    list->Signal(SIGTERM);
    EXPECT_EQ(run->WaitForExit(), SUCCESS);
}

TEST_F(Scenario, TakesEventsStrictlyInTheirOrder) {
    const auto list = m_set.StartList();
    const std::string output = Play(
        "wait connected\nexpect event LocalCreated\nadd a=A\nexpect event ItemSelected\n", FAILED);
    EXPECT_THAT(output, HasSubstr("problem: \"received event 1 ItemChanged instead\""));
}

TEST_F(Scenario, ReportsHowManyEventsWereReceivedBeforeAFailure) {
    const auto list = m_set.StartList();
    const std::string begin = "wait connected\nexpect event LocalCreated\nadd a=A\n";
    EXPECT_THAT(Play(begin + "expect event ItemChanged times 2\n", FAILED),
                HasSubstr("problem: \"after 1 of 2: received event 2 ItemSelected instead\""));
    EXPECT_THAT(Play(begin + "expect event ItemChanged times 2 within 10ms\n", FAILED),
                HasSubstr("problem: \"after 0 of 2: no event within 10 ms\""));
}

TEST_F(Scenario, FailsOnAnUnexpectedEvent) {
    const auto list = m_set.StartList();
    EXPECT_THAT(Play("wait connected\nexpect no event for 1min\n", FAILED),
                HasSubstr("problem: \"received event 4 LocalCreated\""));
}

TEST_F(Scenario, PrintsAnUnexpectedReply) {
    const auto list = m_set.StartList();
    const std::string begin = "wait connected\nadd a=A\ncall GetAllItems\n";
    EXPECT_THAT(Play(begin + "expect reply b\n", FAILED), HasSubstr("the reply holds a=A (1)"));
    EXPECT_THAT(Play(begin + "expect reply empty\n", FAILED),
                HasSubstr("the reply has 10 bytes 01 00 00 00 41 01 00 00 00 61"));
    EXPECT_THAT(Play(begin + "expect error\n", FAILED),
                HasSubstr("the call succeeded with a reply of"));
    EXPECT_THAT(Play("wait connected\nexpect reply empty\n", FAILED),
                HasSubstr("no call has been made"));
    EXPECT_THAT(Play("wait connected\nexpect selection b\n", FAILED),
                HasSubstr("the selection is a=A"));
}

TEST_F(Scenario, MatchesItemsByTheirIdAndByTheirNameIfGiven) {
    const auto list = m_set.StartList();
    const std::string begin = "wait connected\n";
    EXPECT_THAT(Play(begin + "expect selection none\nadd none=N empty=\ncall GetAllItems\n"
                             "expect reply none empty=\nexpect list none=N \"empty\"\n"
                             "select none\nexpect selection \"none\"\nexpect selection none=N\n",
                     SUCCESS),
                HasSubstr("1..9\n"));
    EXPECT_THAT(Play(begin + "expect list empty\n", FAILED), HasSubstr("none=N, empty= (2)"));
    EXPECT_THAT(Play(begin + "expect list none=M empty\n", FAILED), HasSubstr("not ok 2"));
    EXPECT_THAT(Play(begin + "expect selection none\n", FAILED), HasSubstr("is none=N"));
    Play(begin +
             "clear\nexpect reply empty\nadd a=\ncall GetSelection\n"
             "expect reply hex 00000000 01 00000061\n",
         SUCCESS);
}

TEST_F(Scenario, EndsWithTheBus) {
    const auto list = m_set.StartList();
    const auto run = Start({m_set.File("it", "wait connected\nwait 1min\nclear\n")});
    ASSERT_TRUE(run->WaitForText("ok 1 - "));
    m_set.bus().Stop();
    EXPECT_EQ(run->WaitForExit(), NO_BUS);
    EXPECT_THAT(run->Output(), EndsWith("Bail out! the bus closed the connection\n"));
    EXPECT_EQ(run->Errors(), "javamw-sim: the bus closed the connection\n");
}

TEST_F(Scenario, EndsWithoutABus) {
    m_set.bus().Stop();
    const std::string output = Play("wait connected\nclear\n", NO_BUS);
    EXPECT_THAT(output, HasSubstr("not ok 1 - it:1 wait connected\n"));
    EXPECT_THAT(output, HasSubstr("Bail out! cannot reach the bus: "));
    EXPECT_THAT(m_errors, StartsWith("javamw-sim: cannot reach the bus: "));
}

TEST_F(Scenario, StopsOnSignals) {
    for (const int number : {SIGINT, SIGTERM}) {
        const auto run = Start({m_set.File("it", "wait 1ms\nwait 1min\nwait 1min\n")});
        ASSERT_TRUE(run->WaitForText("ok 1 - "));
        run->Signal(number);
        EXPECT_EQ(run->WaitForExit(), FAILED);
        EXPECT_THAT(WithoutFolder(run->Output()),
                    EndsWith("ok 1 - it:1 wait 1ms\nBail out! interrupted at it:2 wait 1min\n"));
        EXPECT_EQ(run->Errors(), "");
    }
}

TEST_F(Scenario, IsColouredOnlyOnATerminal) {
    const std::string file = m_set.File("it", "wait 1ms\n");
    const auto play = [&](const std::string& environment) {
        ChildProcess terminal(
            {"script", "-qec", environment + " " + BuiltProgram("javamw-sim") + " run " + file,
             "/dev/null"},
            {{"TERM", "xterm"}, {"NO_COLOR", std::nullopt}});
        EXPECT_EQ(terminal.WaitForExit(), SUCCESS);
        return terminal.Output();
    };
    EXPECT_THAT(play(""), HasSubstr("\033[32mok\033[0m 1 - "));
    EXPECT_THAT(play("NO_COLOR=1"), Not(HasSubstr("\033")));
    EXPECT_THAT(play("TERM=dumb"), Not(HasSubstr("\033")));
}

/// The scenarios that come with the tool.
class Example : public Scenario, public testing::WithParamInterface<std::string> {};

std::filesystem::path ExampleFolder() {
    const char* source = std::getenv("APPLIST_SOURCE");
    return std::filesystem::path(source != nullptr ? source : ".") / "tools/javamw-sim/scenarios";
}

std::vector<std::string> ExampleNames() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(ExampleFolder())) {
        names.push_back(entry.path().stem().string());
    }
    return names;
}

std::string TestName(const testing::TestParamInfo<std::string>& name) {
    std::string text = name.param;
    std::replace(text.begin(), text.end(), '-', '_');
    return text;
}

TEST_P(Example, Holds) {
    const auto list = m_set.StartList();
    const auto run = Start({(ExampleFolder() / (GetParam() + ".scenario")).string()});
    EXPECT_EQ(run->WaitForExit(), SUCCESS) << run->Output() << run->Errors();
    EXPECT_THAT(run->Output(), Not(HasSubstr("# SKIP")));
}

INSTANTIATE_TEST_SUITE_P(OfTheTool, Example, testing::ValuesIn(ExampleNames()), TestName);

}  // namespace
}  // namespace applist::test
