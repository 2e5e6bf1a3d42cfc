// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Tests the program's main(), renamed in this build, with a fake framework that records calls.
#include <csignal>
#include <new>
#include <string>

#include <gmock/gmock.h>

#include "AppListEntry.h"
#include "BannerEntry.h"
#include "fakes/FakeApp.h"
#include "fakes/FakePlatformLog.h"

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

constexpr const char* VERSION_LINE = "APPLIST v: plm-applist-20150201.1\n";

class Main : public testing::Test {
protected:
    Main() {
        TheApp() = FakeApp{};
        ClearLog();
        g_decisions = 0;
        g_memoryLeft = true;
    }

    int Run(bool visible, int loopResult = 0) {
        g_visible = visible;
        TheApp().result = loopResult;
        testing::internal::CaptureStdout();
        const int status = applist_main(1, m_argv);
        m_outputAfter = testing::internal::GetCapturedStdout();
        return status;
    }

    char m_name[8] = "applist";
    char* m_argv[2] = {m_name, nullptr};
    std::string m_outputAfter;
};

// The decision may take seconds.
TEST_F(Main, PrintsTheVersionLineBeforeItsOnlyDecisionAndRunsOneLoopWithTheArguments) {
    for (const bool visible : {true, false}) {
        g_decisions = 0;
        TheApp() = FakeApp{};
        Run(visible);
        EXPECT_EQ(g_printedBefore, VERSION_LINE);
        EXPECT_EQ(m_outputAfter, "");
        EXPECT_EQ(g_decisions, 1);
        EXPECT_EQ(TheApp().runs.size(), 1U);
        EXPECT_EQ(TheApp().argc, 1);
        EXPECT_EQ(TheApp().argv, m_argv);
    }
}

TEST_F(Main, IgnoresAClosedPipe) {
    static_cast<void>(std::signal(SIGPIPE, SIG_DFL));
    Run(false);
    EXPECT_EQ(std::signal(SIGPIPE, SIG_DFL), SIG_IGN);
}

TEST_F(Main, RunsTheListWithTheEntryAsUserDataIfVisible) {
    TheApp().life = [](const ui_app_callbacks& table, void* data) {
        EXPECT_EQ(table.create, AppListEntry::Create);
        EXPECT_EQ(table.terminate, AppListEntry::Terminate);
        EXPECT_EQ(table.pause, AppListEntry::Pause);
        EXPECT_EQ(table.resume, AppListEntry::Resume);
        EXPECT_EQ(table.app_control, AppListEntry::Service);
        EXPECT_TRUE(table.create(data));
        table.terminate(data);
    };
    EXPECT_EQ(Run(true), 0);
    EXPECT_THAT(Log(), testing::Contains(Event("renderer created: org.vantu.applist")));
}

TEST_F(Main, RunsTheBannerWithoutUserDataIfHidden) {
    EXPECT_EQ(Run(false), 0);
    ASSERT_EQ(TheApp().runs.size(), 1U);
    const ui_app_callbacks& table = TheApp().runs[0];
    EXPECT_EQ(table.create, BannerCreate);
    EXPECT_EQ(table.terminate, BannerTerminate);
    EXPECT_EQ(table.pause, BannerPause);
    EXPECT_EQ(table.resume, BannerResume);
    EXPECT_EQ(table.app_control, BannerService);
    EXPECT_EQ(TheApp().userData[0], nullptr);
}

// main() has another name in this program.
TEST_F(Main, LogsItsBranchAndTheLoopsFailureWhichIsTheExitStatus) {
    const auto logOf = [this](bool visible, int loopResult) {
        ClearLog();
        EXPECT_EQ(Run(visible, loopResult), loopResult);
        return LogText();
    };
    const std::string shown =
        Lines({"applist_main: CheckVisibility returned true. Showing application",
               "applist_main: start efl main"});
    const std::string hidden = Lines(
        {"applist_main: Application can not be shown due to CheckVisibility returning false"});
    const std::string end = Lines({"applist_main: end efl main"});
    // The entry exists if the list is shown, and is deleted last.
    EXPECT_EQ(logOf(true, 0), shown + end + "Delete: Delete\n");
    EXPECT_EQ(logOf(false, 0), hidden + end);
    EXPECT_EQ(logOf(true, 3), shown + "ERROR applist_main: app_main() is failed. err = 3\n" + end +
                                  "Delete: Delete\n");
    EXPECT_EQ(logOf(false, -7),
              hidden + "ERROR applist_main: app_main() is failed. err = -7\n" + end);
}

TEST_F(Main, LogsAnExceptionAndReturnsAnErrorStatus) {
    g_memoryLeft = false;
    EXPECT_EQ(Run(true), -5);
    EXPECT_EQ(LogText(), "ERROR applist_main: Aborted: std::bad_alloc\n");
}

}  // namespace
}  // namespace applist::test
