// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// applist-bench: runs a command on a private bus with a simulated set, and cleans up after it.
#include <csignal>
#include <filesystem>
#include <fstream>

#include <gmock/gmock.h>

#include "support/ChildProcess.h"
#include "support/TemporaryDir.h"

namespace applist::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

class Bench : public testing::Test {
protected:
    std::unique_ptr<ChildProcess> Start(std::vector<std::string> words) {
        words.insert(words.begin(), BuiltProgram("applist-bench"));
        return std::make_unique<ChildProcess>(
            words, ChildProcess::Environment{{"TMPDIR", m_folder.path().string()},
                                             {"PATH", "/usr/bin:/bin"},
                                             {"DISPLAY", std::nullopt},
                                             {"WAYLAND_DISPLAY", std::nullopt}});
    }

    /// Runs the bench and returns its exit status.
    int Run(const std::vector<std::string>& words) {
        const auto bench = Start(words);
        const int status = bench->WaitForExit().value_or(-1);
        m_output = bench->Output();
        m_errors = bench->Errors();
        return status;
    }

    int RunScript(const std::string& script) { return Run({"--", "sh", "-c", script}); }

    TemporaryDir m_folder;
    std::string m_output;
    std::string m_errors;
};

TEST_F(Bench, RunsACommandOnASetThatOffersTheList) {
    EXPECT_EQ(RunScript("platformctl visible && javamw-sim call AddItems a=A b=B &&"
                        " echo down >$APPLIST_BENCH_KEYS && echo state >$APPLIST_BENCH_KEYS &&"
                        " javamw-sim call GetAllItems"),
              0)
        << m_errors;
    EXPECT_THAT(m_output, StartsWith("shown\n"));
    EXPECT_THAT(m_output, HasSubstr("a\tA\nb\tB\n"));
}

TEST_F(Bench, ReturnsTheStatusOfTheCommand) {
    EXPECT_EQ(RunScript("exit 7"), 7);
    EXPECT_EQ(RunScript("kill -KILL $$"), 128 + SIGKILL);
    EXPECT_EQ(Run({"no-such-command"}), 127);
    EXPECT_EQ(m_errors, "applist-bench: cannot run 'no-such-command': No such file or directory\n");
}

TEST_F(Bench, LeavesNothingRunning) {
    EXPECT_EQ(RunScript("echo $DBUS_SYSTEM_BUS_ADDRESS $DBUS_SESSION_BUS_ADDRESS;"
                        " javamw-sim call GetAllItems"),
              0);
    EXPECT_TRUE(std::filesystem::is_empty(m_folder.path()));
    ChildProcess watch(
        {BuiltProgram("javamw-sim"), "watch", "--address", m_output.substr(0, m_output.find(' '))});
    EXPECT_EQ(watch.WaitForExit(), 3);
}

TEST_F(Bench, PassesASignalToTheCommandAndCleansUp) {
    for (const int signal : {SIGTERM, SIGHUP}) {
        const auto bench = Start({"sh", "-c", "echo started; exec sleep 1000"});
        ASSERT_TRUE(bench->WaitForText("started"));
        bench->Signal(signal);
        EXPECT_EQ(bench->WaitForExit(), 128 + signal);
        EXPECT_TRUE(std::filesystem::is_empty(m_folder.path()));
    }
}

TEST_F(Bench, TypesTheLinesOfAFileOrAPipe) {
    const std::string keys = (m_folder.path() / "keys").string();
    std::ofstream(keys) << "await items 5\ndown\nok\n";
    const std::string bench = BuiltProgram("applist-bench") + " --keys ";
    for (const std::string line : {"$BENCH $KEYS", "cat $KEYS | $BENCH -", "$BENCH <(cat $KEYS)"}) {
        ChildProcess shell(
            {"bash", "-c", line + " -- sh -c 'javamw-sim serve | grep -m 1 ItemClicked'"},
            {{"TMPDIR", m_folder.path().string()}, {"BENCH", bench}, {"KEYS", keys}});
        EXPECT_EQ(shell.WaitForExit(), 0) << line << shell.Errors();
        EXPECT_EQ(shell.Output(), "event 3 ItemClicked chose 0000000b.0002\tMeteo\n");
    }
}

TEST_F(Bench, EndsWithoutATraceIfItCannotPrint) {
    const std::string help = BuiltProgram("applist-bench") + " --help";
    ChildProcess full({"sh", "-c", help + " >/dev/full"});
    EXPECT_EQ(full.WaitForExit(), 3);
    EXPECT_EQ(full.Errors(), "applist-bench: No space left on device\n");
    ChildProcess closed({"bash", "-c", "set -o pipefail; " + help + " | exec true"});
    closed.WaitForExit();
    EXPECT_EQ(closed.Errors(), "");
}

TEST_F(Bench, StartsTheApplicationAgainIfAskedTo) {
    const auto bench =
        Start({"--again", "sh", "-c", "echo $APPLIST_BENCH_KEYS >&2; exec javamw-sim serve"});
    ASSERT_TRUE(bench->WaitForText("filled"));
    const std::string fifo = bench->Errors().substr(0, bench->Errors().find('\n'));
    std::ofstream(fifo) << "back\n";
    ASSERT_TRUE(bench->WaitForText("disconnected"));
    EXPECT_TRUE(bench->WaitUntil([&] {
        return bench->Output().find("filled", bench->Output().find("disconnected")) !=
               std::string::npos;
    }));
    bench->Signal(SIGTERM);
    EXPECT_EQ(bench->WaitForExit(), 0);
}

TEST_F(Bench, RefusesWrongUsage) {
    EXPECT_EQ(Run({}), 2);
    EXPECT_EQ(m_errors, "applist-bench: no command; see applist-bench --help\n");
    EXPECT_EQ(Run({"--bogus", "true"}), 2);
    EXPECT_EQ(m_errors, "applist-bench: unknown option '--bogus'; see applist-bench --help\n");
    EXPECT_EQ(Run({"--keys"}), 2);
    EXPECT_EQ(Run({"--keys", "/no/such/file", "true"}), 2);
    EXPECT_EQ(m_errors, "applist-bench: cannot read '/no/such/file': No such file or directory\n");
    EXPECT_EQ(Run({"--keys", "/", "true"}), 2);
    EXPECT_EQ(m_errors, "applist-bench: cannot read '/': Is a directory\n");
}

}  // namespace
}  // namespace applist::test
