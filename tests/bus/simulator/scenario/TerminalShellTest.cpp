// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <filesystem>

#include <gmock/gmock.h>

#include "bus/simulator/Simulation.h"
#include "support/TerminalProcess.h"

namespace applist::test {
namespace {

using testing::HasSubstr;
using testing::Not;

constexpr const char* ENTER = "\r";
constexpr const char* TAB = "\t";
constexpr const char* UP = "\033[A";
constexpr const char* LEFT = "\033[D";
constexpr const char* INTERRUPT = "\x03";
constexpr const char* END_OF_FILE = "\x04";
constexpr const char* PROMPT = "middleware> ";

/// The shell on a terminal with the list connected.
class TerminalShell : public testing::Test {
protected:
    std::unique_ptr<TerminalProcess> Start(const std::string& terminal = "xterm") {
        auto environment = m_set.bus().Environment();
        environment["XDG_STATE_HOME"] = m_set.Path("state");
        environment["HOME"] = m_set.Path("");
        environment["TERM"] = terminal;
        environment["NO_COLOR"] = "1";
        environment["LC_ALL"] = "C";
        auto shell = std::make_unique<TerminalProcess>(
            std::vector<std::string>{BuiltProgram("javamw-sim"), "shell"}, environment);
        EXPECT_TRUE(shell->WaitFor("event 4 LocalCreated")) << shell->Output();
        return shell;
    }

    // The items of the list, read by another process.
    std::string List() {
        EXPECT_EQ(m_set.Run({"call", "GetAllItems"}), SUCCESS);
        return m_set.output();
    }

    Simulation m_set;
    const Simulation::Process m_list = m_set.StartList();
};

TEST_F(TerminalShell, RunsTypedStatements) {
    const auto shell = Start();
    shell->Type(std::string("add w1=Weather") + ENTER);
    EXPECT_TRUE(shell->WaitFor("ok\r\n")) << shell->Output();
    shell->Type(std::string("call GetAllItems") + ENTER);
    EXPECT_TRUE(shell->WaitFor("w1\tWeather\r\n")) << shell->Output();
    shell->Type(std::string("quit") + ENTER);
    EXPECT_EQ(shell->WaitForExit(), SUCCESS) << shell->Output();
    EXPECT_EQ(List(), "w1\tWeather\n");
}

TEST_F(TerminalShell, PrintsEventsAboveTheLineBeingTyped) {
    const auto shell = Start();
    shell->Type("sel");
    ASSERT_TRUE(shell->WaitFor("sel"));
    ASSERT_EQ(m_set.Run({"call", "AddItems", "w1=Weather", "n1=News"}), SUCCESS);
    EXPECT_TRUE(shell->WaitFor("event 2 ItemSelected\r\nmiddleware> sel")) << shell->Output();
    shell->Type(std::string("ect n1") + ENTER);
    EXPECT_TRUE(shell->WaitFor("ok\r\n")) << shell->Output();
    EXPECT_EQ(m_set.Run({"call", "GetSelection"}), SUCCESS);
    EXPECT_EQ(m_set.output(), "n1\tNews\n");
}

TEST_F(TerminalShell, KeepsALineOfSeveralRowsWhenAnEventComes) {
    const auto shell = Start();
    const std::string name(150, 'x');
    shell->Type("add w1=" + name);
    ASSERT_TRUE(shell->WaitFor("xxxxxxxxxx"));
    shell->Type("END");
    ASSERT_TRUE(shell->WaitFor("END"));
    ASSERT_EQ(m_set.Run({"call", "AddItems", "n1=News"}), SUCCESS);
    ASSERT_TRUE(shell->WaitFor("\033[2A\r\033[J")) << shell->Output();
    ASSERT_TRUE(shell->WaitFor("ItemSelected\r\nmiddleware> add w1=")) << shell->Output();
    shell->Type(ENTER);
    EXPECT_TRUE(shell->WaitFor("ok\r\n"));
    EXPECT_EQ(List(), "n1\tNews\nw1\t" + name + "END\n");
}

TEST_F(TerminalShell, WorksOnATerminalWithoutCursorKeys) {
    const auto shell = Start("dumb");
    shell->Type("cle");
    ASSERT_TRUE(shell->WaitFor("e"));
    ASSERT_EQ(m_set.Run({"call", "AddItems", "n1=News"}), SUCCESS);
    ASSERT_TRUE(shell->WaitFor("event 2 ItemSelected"));
    shell->Type(std::string("ar") + ENTER);
    EXPECT_TRUE(shell->WaitFor("ok"));
    EXPECT_EQ(List(), "");
    EXPECT_THAT(shell->Output(), Not(HasSubstr("\033[J")));
}

TEST_F(TerminalShell, EditsInsideTheLine) {
    const auto shell = Start();
    shell->Type(std::string("add w1=Citt\u00e0") + LEFT + LEFT + LEFT + LEFT + LEFT + "X" + ENTER);
    EXPECT_TRUE(shell->WaitFor("ok\r\n")) << shell->Output();
    EXPECT_EQ(List(), "w1\tXCitt\u00e0\n");
}

TEST_F(TerminalShell, CompletesKeywordsAndSeenIds) {
    const auto shell = Start();
    shell->Type(std::string("ad") + TAB + "weather=Weather" + ENTER);
    ASSERT_TRUE(shell->WaitFor("ok\r\n")) << shell->Output();
    shell->Type(std::string("rem") + TAB + "we" + TAB + ENTER);
    ASSERT_TRUE(shell->WaitFor("ok\r\n")) << shell->Output();
    EXPECT_EQ(List(), "");
    shell->Type(std::string("expect event Item") + TAB);
    EXPECT_TRUE(
        shell->WaitFor("ItemChanged  ItemClicked  ItemSelected\r\n"
                       "middleware> expect event Item"))
        << shell->Output();
}

TEST_F(TerminalShell, FindsEarlierLinesAlsoInTheNextSession) {
    {
        const auto shell = Start();
        shell->Type(std::string("add w1=Weather") + ENTER);
        ASSERT_TRUE(shell->WaitFor("ok\r\n"));
        shell->Type(std::string("clear") + ENTER);
        ASSERT_TRUE(shell->WaitFor("ok\r\n"));
        shell->Type(END_OF_FILE);
        EXPECT_EQ(shell->WaitForExit(), SUCCESS) << shell->Output();
    }
    const auto permissions =
        std::filesystem::status(m_set.Path("state/javamw-sim/history")).permissions();
    EXPECT_EQ(permissions,
              std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    const auto shell = Start();
    shell->Type(std::string(UP) + UP + ENTER);
    EXPECT_TRUE(shell->WaitFor("ok\r\n")) << shell->Output();
    EXPECT_EQ(List(), "w1\tWeather\n");
}

TEST_F(TerminalShell, ReadsInputTypedBeforeThePrompt) {
    const auto shell = Start();
    shell->Type(std::string("expect event LocalCreated") + ENTER);
    ASSERT_TRUE(shell->WaitFor("ok\r\n")) << shell->Output();
    shell->Type(std::string("expect event ItemChanged within 1min") + ENTER);
    ASSERT_TRUE(shell->WaitFor("1min\r\n")) << shell->Output();
    shell->Type(std::string("add w1=Weather") + ENTER + END_OF_FILE);
    ASSERT_EQ(m_set.Run({"call", "AddItems", "n1=News"}), SUCCESS);
    EXPECT_EQ(shell->WaitForExit(), SUCCESS) << shell->Output();
    EXPECT_EQ(List(), "n1\tNews\nw1\tWeather\n");
}

TEST_F(TerminalShell, ContinuesAfterAFailure) {
    const auto shell = Start();
    shell->Type(std::string("dance") + ENTER);
    EXPECT_TRUE(shell->WaitFor("column 1: 'dance' is not a statement\r\n")) << shell->Output();
    shell->Type(std::string("expect count 3") + ENTER);
    EXPECT_TRUE(shell->WaitFor("\r\nmiddleware> ")) << shell->Output();
    shell->Type(std::string("expect count 0") + ENTER);
    EXPECT_TRUE(shell->WaitFor("ok\r\n")) << shell->Output();
    shell->Type(END_OF_FILE);
    EXPECT_EQ(shell->WaitForExit(), SUCCESS) << shell->Output();
}

TEST_F(TerminalShell, ShowsTheActingPartnerInThePrompt) {
    const auto shell = Start();
    shell->Type(std::string("partner other") + ENTER);
    EXPECT_TRUE(shell->WaitFor("other> ")) << shell->Output();
}

TEST_F(TerminalShell, EndsStatementThenLineThenShellOnInterruption) {
    const auto shell = Start();
    shell->Type(std::string("wait 1min") + ENTER);
    ASSERT_TRUE(shell->WaitFor("wait 1min\r\n"));
    shell->Type(INTERRUPT);
    ASSERT_TRUE(shell->WaitFor("interrupted\r\n")) << shell->Output();
    ASSERT_TRUE(shell->WaitFor(PROMPT));
    shell->Type("clear");
    ASSERT_TRUE(shell->WaitFor("clear"));
    shell->Type(INTERRUPT);
    ASSERT_TRUE(shell->WaitFor("^C\r\n")) << shell->Output();
    ASSERT_TRUE(shell->WaitFor(PROMPT));
    shell->Type(INTERRUPT);
    EXPECT_EQ(shell->WaitForExit(), SUCCESS) << shell->Output();
}

TEST_F(TerminalShell, EndsWhenTheTerminalGoesAway) {
    const auto shell = Start();
    shell->HangUp();
    EXPECT_EQ(shell->WaitForExit(), SUCCESS) << shell->Output();
}

TEST_F(TerminalShell, EndsWhenTheBusIsGone) {
    const auto shell = Start();
    m_set.bus().Stop();
    EXPECT_EQ(shell->WaitForExit(), NO_BUS);
    EXPECT_THAT(shell->Output(), HasSubstr("the bus closed the connection"));
}

}  // namespace
}  // namespace applist::test
