// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Tests the program's main(), renamed in this build, with a fake framework that records calls.
#include <csignal>
#include <new>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AppListEntry.h"
#include "BannerEntry.h"
#include "fakes/FakeApp.h"
#include "fakes/FakePlatformLog.h"
#include "unit/start/FakeGraph.h"

int applist_main(int argc, char** argv);

namespace {

bool g_visible = true;
bool g_memoryLeft = true;
int g_decisions = 0;
std::string g_printedBefore;

}  // namespace

// The decision that a test sets.
bool CheckVisibility() {
    ++g_decisions;
    g_printedBefore = testing::internal::GetCapturedStdout();
    testing::internal::CaptureStdout();
    if (!g_memoryLeft) {
        throw std::bad_alloc();
    }
    return g_visible;
}

namespace applist::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;

// The name of main in this program.
constexpr const char* SELF = "applist_main";

class Main : public testing::Test {
protected:
    Main() {
        TheApp() = FakeApp{};
        Graph() = GraphJournal{};
        ClearLog();
        g_decisions = 0;
        g_memoryLeft = true;
    }

    int Run(bool visible, int loopResult = 0) {
        g_visible = visible;
        TheApp().result = loopResult;
        testing::internal::CaptureStdout();
        const int status = applist_main(1, m_argv);
        m_output = g_printedBefore + testing::internal::GetCapturedStdout();
        return status;
    }

    char m_name[8] = "applist";
    char* m_argv[2] = {m_name, nullptr};
    std::string m_output;
};

TEST_F(Main, PrintsTheVersionLineWhateverTheDecision) {
    Run(true);
    EXPECT_EQ(m_output, "APPLIST v: plm-applist-20150201.1\n");
    Run(false);
    EXPECT_EQ(m_output, "APPLIST v: plm-applist-20150201.1\n");
}

TEST_F(Main, PrintsTheVersionLineBeforeTheDecisionWhichMayTakeSeconds) {
    Run(true);
    EXPECT_EQ(g_printedBefore, "APPLIST v: plm-applist-20150201.1\n");
}

TEST_F(Main, IgnoresAClosedPipe) {
    static_cast<void>(std::signal(SIGPIPE, SIG_DFL));
    Run(false);
    EXPECT_EQ(std::signal(SIGPIPE, SIG_DFL), SIG_IGN);
}

TEST_F(Main, DecidesOnceAndRunsOneLoop) {
    Run(true);
    EXPECT_EQ(g_decisions, 1);
    EXPECT_EQ(TheApp().runs.size(), 1U);
}

TEST_F(Main, GivesTheLoopTheArgumentsOfTheProcess) {
    for (const bool visible : {true, false}) {
        Run(visible);
        EXPECT_EQ(TheApp().argc, 1);
        EXPECT_EQ(TheApp().argv, m_argv);
        TheApp() = {};
    }
}

TEST_F(Main, RunsTheListWithTheEntryAsUserDataWhenVisible) {
    EXPECT_EQ(Run(true), 0);
    ASSERT_EQ(TheApp().runs.size(), 1U);
    const ui_app_callbacks& table = TheApp().runs[0];
    EXPECT_EQ(table.create, AppListEntry::Create);
    EXPECT_EQ(table.terminate, AppListEntry::Terminate);
    EXPECT_EQ(table.pause, AppListEntry::Pause);
    EXPECT_EQ(table.resume, AppListEntry::Resume);
    EXPECT_EQ(table.app_control, AppListEntry::Service);
}

TEST_F(Main, HandsTheLoopTheEntryWithTheApplicationsId) {
    TheApp().life = [](const ui_app_callbacks& table, void* data) {
        EXPECT_TRUE(table.create(data));
        table.terminate(data);
    };
    Run(true);
    EXPECT_EQ(Graph().rendererGot, "org.vantu.applist");
}

TEST_F(Main, LogsTheListBranchInOrderAndDeletesTheEntryLast) {
    Run(true);
    EXPECT_THAT(
        Log(),
        ElementsAre(Debug("CheckVisibility returned true. Showing application", SELF),
                    Debug("start efl main", SELF), Debug("end efl main", SELF), Debug("Delete")));
}

TEST_F(Main, RunsTheBannerWithoutUserDataAndWithoutAnEntryWhenHidden) {
    EXPECT_EQ(Run(false), 0);
    ASSERT_EQ(TheApp().runs.size(), 1U);
    const ui_app_callbacks& table = TheApp().runs[0];
    EXPECT_EQ(table.create, BannerCreate);
    EXPECT_EQ(table.terminate, BannerTerminate);
    EXPECT_EQ(table.pause, BannerPause);
    EXPECT_EQ(table.resume, BannerResume);
    EXPECT_EQ(table.app_control, BannerService);
    EXPECT_EQ(TheApp().userData[0], nullptr);
    EXPECT_THAT(LogMessages(), Not(Contains("Delete")));
}

TEST_F(Main, LogsTheBannerBranchInOrder) {
    Run(false);
    EXPECT_THAT(
        Log(),
        ElementsAre(
            Debug("Application can not be shown due to CheckVisibility returning false", SELF),
            Debug("end efl main", SELF)));
}

TEST_F(Main, GivesTheLoopsFailureAsExitStatusAndLogsIt) {
    EXPECT_EQ(Run(true, 3), 3);
    EXPECT_THAT(
        Log(),
        ElementsAre(Debug("CheckVisibility returned true. Showing application", SELF),
                    Debug("start efl main", SELF), Error("app_main() is failed. err = 3", SELF),
                    Debug("end efl main", SELF), Debug("Delete")));
    ClearLog();
    EXPECT_EQ(Run(false, -7), -7);
    EXPECT_THAT(
        Log(),
        ElementsAre(
            Debug("Application can not be shown due to CheckVisibility returning false", SELF),
            Error("app_main() is failed. err = -7", SELF), Debug("end efl main", SELF)));
}

TEST_F(Main, LogsAnExceptionAndReturnsAnErrorStatus) {
    g_memoryLeft = false;
    EXPECT_EQ(Run(true), -5);
    EXPECT_THAT(Log(), ElementsAre(Error("Aborted: std::bad_alloc", SELF)));
}

}  // namespace
}  // namespace applist::test
