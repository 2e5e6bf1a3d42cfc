// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <optional>
#include <poll.h>
#include <pty.h>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <sys/types.h>
#include <sys/wait.h>

#include "bus/simulator/Simulation.h"

namespace applist::test {
namespace {

using Clock = std::chrono::steady_clock;

/// A program on a pseudo-terminal, 80 columns wide, on which the test types. Killed and reaped by
/// the destructor.
class TerminalProcess {
public:
    explicit TerminalProcess(const std::vector<std::string>& argv,
                             const ChildProcess::Environment& changes = {});
    ~TerminalProcess();
    TerminalProcess(const TerminalProcess&) = delete;
    TerminalProcess& operator=(const TerminalProcess&) = delete;

    /// As a person types it: "\r" is Enter, "\x03" Ctrl-C.
    void Type(const std::string& keys) const;
    /// Closes the terminal, as closing its window does.
    void HangUp();
    /// All output on the terminal so far, including control sequences.
    const std::string& Output() const { return m_output; }
    /// Reads until text appears after the text found last; true iff it does in time.
    bool WaitFor(const std::string& text);
    /// Reads until the program ends. Returns its exit status, 128 + n after signal n, or nothing if
    /// it still runs when patience ends.
    std::optional<int> WaitForExit();

private:
    bool ReadSome(std::chrono::steady_clock::time_point deadline);

    pid_t m_pid = -1;
    int m_terminal = -1;
    std::string m_output;
    size_t m_found = 0;
    bool m_ended = false;
};

TerminalProcess::TerminalProcess(const std::vector<std::string>& argv,
                                 const ChildProcess::Environment& changes) {
    winsize size{};
    size.ws_row = 24;
    size.ws_col = 80;
    m_pid = forkpty(&m_terminal, nullptr, nullptr, &size);
    if (m_pid == 0) {
        BecomeProgram(argv, changes);
    }
}

TerminalProcess::~TerminalProcess() {
    HangUp();
    if (m_pid > 0) {
        kill(m_pid, SIGKILL);
        waitpid(m_pid, nullptr, 0);
    }
}

void TerminalProcess::Type(const std::string& keys) const {
    for (size_t done = 0; done < keys.size();) {
        const ssize_t size = write(m_terminal, keys.data() + done, keys.size() - done);
        if (size < 0 && errno != EINTR) {
            return;
        }
        done += static_cast<size_t>(std::max<ssize_t>(0, size));
    }
}

void TerminalProcess::HangUp() {
    if (m_terminal >= 0) {
        close(std::exchange(m_terminal, -1));
    }
}

// The read fails once the last process has closed the terminal.
bool TerminalProcess::ReadSome(Clock::time_point deadline) {
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
    pollfd waited{m_terminal, POLLIN, 0};
    if (left.count() <= 0 || poll(&waited, 1, static_cast<int>(left.count())) == 0) {
        return false;
    }
    std::array<char, 4096> buffer{};
    const ssize_t size = read(m_terminal, buffer.data(), buffer.size());
    m_ended = size <= 0;
    m_output.append(buffer.data(), static_cast<size_t>(std::max<ssize_t>(0, size)));
    return true;
}

bool TerminalProcess::WaitFor(const std::string& text) {
    const auto deadline = Clock::now() + PATIENCE;
    while (true) {
        const size_t place = m_output.find(text, m_found);
        if (place != std::string::npos) {
            m_found = place + text.size();
            return true;
        }
        if (m_ended || !ReadSome(deadline)) {
            return false;
        }
    }
}

std::optional<int> TerminalProcess::WaitForExit() {
    const auto deadline = Clock::now() + PATIENCE;
    while (m_terminal >= 0 && !m_ended) {
        if (!ReadSome(deadline)) {
            return std::nullopt;
        }
    }
    int status = 0;
    if (waitpid(std::exchange(m_pid, -1), &status, 0) < 0) {
        return std::nullopt;
    }
    return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

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
