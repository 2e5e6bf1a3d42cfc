// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <csignal>

#include <gmock/gmock.h>

#include "bus/simulator/Simulation.h"
#include "support/GlibWait.h"

namespace applist::test {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;

/// The shell with input from a pipe.
class PipedShell : public testing::Test {
protected:
    // Starts the shell with these lines as its input.
    Simulation::Process Start(const std::string& lines, const std::string& options = "") {
        return std::make_unique<ChildProcess>(
            std::vector<std::string>{"sh", "-c",
                                     "exec " + BuiltProgram("javamw-sim") + " shell " + options +
                                         " <'" + m_set.File("lines", lines) + "'"},
            m_set.bus().Environment());
    }
    int Feed(const std::string& lines, const std::string& options = "") {
        const auto shell = Start(lines, options);
        const int status = shell->WaitForExit().value_or(-1);
        m_output = shell->Output();
        m_errors = shell->Errors();
        return status;
    }
    // Like Feed(), with an application that answers the handshake but has no object, so that each
    // call to it fails.
    int FeedWithoutAnObject(const std::string& lines) {
        ScriptedPeer application = m_set.ConnectApplication();
        const auto shell = Start(lines);
        EXPECT_TRUE(application.AwaitHeard(1));
        application.Announce("_SERVICE_SYN_ACK");
        const int status = shell->WaitForExit().value_or(-1);
        m_errors = shell->Errors();
        return status;
    }

    // Runs a shell command on this bus and returns its output.
    std::string RunLine(const std::string& line) {
        ChildProcess process({"sh", "-c", line}, m_set.bus().Environment());
        EXPECT_EQ(process.WaitForExit(), SUCCESS) << line << '\n' << process.Errors();
        return process.Output();
    }

    // Returns the output lines that start with beginning.
    std::vector<std::string> LinesOf(const std::string& beginning) const {
        std::vector<std::string> lines;
        for (size_t at = 0; at < m_output.size();) {
            const size_t end = m_output.find('\n', at);
            const std::string line = m_output.substr(at, end - at);
            if (line.starts_with(beginning)) {
                lines.push_back(line);
            }
            at = end + 1;
        }
        return lines;
    }

    Simulation m_set;
    std::string m_output;
    std::string m_errors;
};

TEST_F(PipedShell, RunsEachStatementAndPrintsEventsWithoutAPrompt) {
    const auto list = m_set.StartList();
    EXPECT_EQ(Feed("wait connected\nexpect event LocalCreated\n\n# a comment\nadd w1=Weather\n"
                   "expect event ItemChanged\nexpect event ItemSelected\ncall GetAllItems"),
              SUCCESS)
        << m_errors;
    EXPECT_THAT(m_output, MatchesRegex("middleware: connected :[0-9.]+\n"
                                       "middleware: event 4 LocalCreated\n"
                                       "middleware: event 1 ItemChanged\n"
                                       "middleware: event 2 ItemSelected\n"
                                       "w1\tWeather\n"));
    EXPECT_EQ(m_errors, "");
}

TEST_F(PipedShell, EndsAtTheFirstLineThatFailsAndNamesIt) {
    const auto list = m_set.StartList();
    EXPECT_EQ(Feed("wait connected\nexpect count 1\nadd w1=Weather\n"), FAILED);
    EXPECT_THAT(m_errors, MatchesRegex("javamw-sim: line 2: [^\n]+\n"));
    EXPECT_EQ(Feed("wait connected\nexpect list empty\n"), SUCCESS) << m_errors;
}

TEST_F(PipedShell, EndsAtALineThatIsNotAStatement) {
    EXPECT_EQ(Feed("timeout 1s\ndance\n"), WRONG_USAGE);
    EXPECT_THAT(m_errors, MatchesRegex("javamw-sim: line 2: column 1: [^\n]*dance[^\n]*\n"));
    EXPECT_EQ(Feed("busctl\n"), WRONG_USAGE);
    EXPECT_EQ(m_errors, "javamw-sim: line 1: no statement has run yet\n");
    EXPECT_EQ(Feed("help dancing\n"), WRONG_USAGE);
    EXPECT_EQ(m_errors, "javamw-sim: line 1: unknown statement or command 'dancing'\n");
}

TEST_F(PipedShell, AcceptsAnErrorOnlyIfTheNextLineExpectsIt) {
    const std::string call = "wait connected\ncall GetSelection";
    EXPECT_EQ(FeedWithoutAnObject(call + "\nexpect error\nnote so\n"), SUCCESS) << m_errors;
    EXPECT_EQ(m_errors, "");
    const auto named = MatchesRegex("javamw-sim: line 2: GetSelection failed: [^\n]+\n");
    EXPECT_EQ(FeedWithoutAnObject(call + "\nnote so\nexpect error\n"), FAILED);
    EXPECT_THAT(m_errors, named);
    EXPECT_EQ(FeedWithoutAnObject(call), FAILED);
    EXPECT_THAT(m_errors, named);
}

TEST_F(PipedShell, ReportsThatItCannotReachTheBus) {
    m_set.bus().Stop();
    EXPECT_EQ(Feed("wait connected\n"), NO_BUS);
    EXPECT_THAT(m_errors, testing::StartsWith("javamw-sim: cannot reach the bus: "));
}

TEST_F(PipedShell, JoinsTheBusWhenNeededIfAskedTo) {
    m_set.bus().Stop();
    EXPECT_EQ(Feed("timeout 1s\nnote nothing yet\n", "--offline"), SUCCESS) << m_errors;
    EXPECT_EQ(Feed("join\n", "--offline"), NO_BUS);
}

TEST_F(PipedShell, PrintsTheViewersChoice) {
    const std::string lines =
        "wait connected\nadd w1=Weather\nexpect event LocalCreated\nexpect event ItemChanged\n"
        "expect event ItemSelected\ncall GetSelection\nexpect event ItemClicked within 1min\n";
    for (const bool json : {false, true}) {
        const auto list = m_set.StartList();
        const auto shell = Start(lines, json ? "--json" : "");
        ASSERT_TRUE(shell->WaitForText("Weather"));
        list->Type("ok");
        EXPECT_EQ(shell->WaitForExit(), SUCCESS) << shell->Errors();
        EXPECT_THAT(shell->Output(),
                    HasSubstr(json ? R"("name":"ItemClicked","selection":{"id":"w1",)"
                                   : "middleware: event 3 ItemClicked chose w1\tWeather\n"));
    }
}

TEST_F(PipedShell, PrintsObjectsForMachines) {
    const auto list = m_set.StartList();
    EXPECT_EQ(
        Feed("wait connected\nadd w1=Weather\ncall GetAllItems\nexpect list empty\n", "--json"),
        FAILED);
    EXPECT_THAT(LinesOf("{"), testing::SizeIs(LinesOf("").size()));
    EXPECT_THAT(m_output, HasSubstr("\"number\":1,\"name\":\"ItemChanged\","
                                    "\"middleware\":\"middleware\"}\n"));
    EXPECT_THAT(m_output, HasSubstr("{\"type\":\"item\",\"id\":\"w1\",\"name\":\"Weather\"}\n"));
    EXPECT_THAT(m_output, HasSubstr("{\"type\":\"problem\",\"statement\":\"expect list empty\","
                                    "\"problem\":\""));
}

TEST_F(PipedShell, PrintsTheBusctlLineThatDoesTheSame) {
    const auto list = m_set.StartList();
    ASSERT_EQ(Feed("wait connected\nadd w1=Weather\nbusctl\nbusctl add n1=\"the News\"\n"
                   "busctl select n1\nbusctl expect selection none\n"),
              SUCCESS)
        << m_errors;
    const auto lines = LinesOf("busctl ");
    ASSERT_EQ(lines.size(), 4U);
    EXPECT_EQ(RunLine(lines[0]), "ay 0\n");
    EXPECT_EQ(RunLine(lines[1]), "ay 0\n");
    EXPECT_EQ(RunLine(lines[2]), "ay 0\n");
    ASSERT_EQ(m_set.Run({"call", "GetAllItems"}), SUCCESS);
    EXPECT_EQ(m_set.output(), "w1\tWeather\nn1\tthe News\n");
    ASSERT_EQ(m_set.Run({"call", "GetSelection"}), SUCCESS);
    EXPECT_EQ(m_set.output(), "n1\tthe News\n");
    EXPECT_EQ(RunLine(lines[3]), "ay 18 8 0 0 0 116 104 101 32 78 101 119 115 2 0 0 0 110 49\n");
}

TEST_F(PipedShell, PrintsABusctlLineThatAnnounces) {
    const auto list = m_set.StartList();
    ASSERT_EQ(Feed("busctl announce syn\n"), SUCCESS) << m_errors;
    const auto lines = LinesOf("busctl ");
    ASSERT_EQ(lines.size(), 1U);
    const auto watch = m_set.Start({"record", "-"});
    ASSERT_TRUE(watch->WaitForText("javamw-recording"));
    EXPECT_EQ(RunLine(lines[0]), "u 1\n");
    EXPECT_TRUE(watch->WaitForText("Applist_SERVICE_SYN_ACK")) << watch->Output();
}

TEST_F(PipedShell, PrintsHelpForCommandsAndStatements) {
    ASSERT_EQ(Feed("help\n"), SUCCESS);
    for (const char* text : {"busctl [STATEMENT]\n", "quit", "add ID=NAME...\n", "expect event "}) {
        EXPECT_THAT(m_output, HasSubstr(text));
    }
    ASSERT_EQ(Feed("help add\n"), SUCCESS);
    EXPECT_THAT(m_output, EndsWith("add ID=NAME...\n    Call AddItems\n"));
}

TEST_F(PipedShell, RunsLinesAsTheyArriveAndEndsOnInterruption) {
    const auto list = m_set.StartList();
    const std::string pipe = m_set.Path("pipe");
    RunLine("mkfifo '" + pipe + "'");
    ChildProcess shell(
        {"sh", "-c", "exec " + BuiltProgram("javamw-sim") + " shell <>'" + pipe + "'"},
        m_set.bus().Environment());
    ASSERT_TRUE(shell.WaitForText("event 4 LocalCreated"));
    RunLine("printf 'add w1=' >'" + pipe + "'");
    RunLine("printf 'Weather\\n' >'" + pipe + "'");
    RunLine("echo 'call GetAllItems' >'" + pipe + "'");
    ASSERT_TRUE(shell.WaitForText("w1\tWeather\n"));
    EXPECT_EQ(Simulation::Interrupt(shell), SUCCESS);
    EXPECT_THAT(shell.Errors(), IsEmpty());
}

}  // namespace
}  // namespace applist::test
