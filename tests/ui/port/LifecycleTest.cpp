// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The life of the sample application without a window; nothing here needs a screen.
#include <csignal>

#include <gtest/gtest.h>

#include "SampleProcess.h"

namespace applist::test {
namespace {

constexpr const char* LAUNCH = "launch org.vantu.port-sample\n";

TEST(Lifecycle, CreatesLaunchesRunsAndTerminates) {
    SampleProcess sample({"--no-window"});
    ASSERT_TRUE(sample.WaitForText(LAUNCH));
    sample.Process().Signal(SIGTERM);
    EXPECT_EQ(sample.WaitForExit(), 0);
    EXPECT_EQ(sample.Output(), std::string("create\n") + LAUNCH + "terminate\nresult 0\n");
}

TEST(Lifecycle, FailsWithoutTerminateWhenCreateRefuses) {
    SampleProcess sample({"--no-window", "--refuse"});
    EXPECT_EQ(sample.WaitForExit(), 1);
    EXPECT_EQ(sample.Output(), "create\nresult -3\n");
    EXPECT_NE(sample.Errors().find("org.vantu.port-sample refused to start\n"), std::string::npos);
}

TEST(Lifecycle, EndsWhenTheFirstLaunchEndsTheToolkitsLoop) {
    SampleProcess sample({"--no-window", "--elm-exit"});
    EXPECT_EQ(sample.WaitForExit(), 0);
    EXPECT_EQ(sample.Output(), std::string("create\n") + LAUNCH + "terminate\nresult 0\n");
}

TEST(Lifecycle, HandsTheProgramsArgumentsToTheFirstLaunch) {
    SampleProcess sample({"--no-window", "--exit-in", "launch", "--extra", "type=notification",
                          "--extra", "text=a=b"});
    EXPECT_EQ(sample.WaitForExit(), 0);
    EXPECT_NE(sample.Output().find("launch org.vantu.port-sample type=notification text=a=b\n"),
              std::string::npos);
}

TEST(Lifecycle, AnswersHelpAndVersionInsteadOfStarting) {
    SampleProcess help({"--no-window", "--help"});
    EXPECT_EQ(help.WaitForExit(), 0);
    EXPECT_EQ(help.Output().find("Usage: port-sample [--extra KEY=VALUE...]\n"), 0U);
    EXPECT_EQ(help.Output().find("create"), std::string::npos);
    SampleProcess version({"--no-window", "--version"});
    EXPECT_EQ(version.WaitForExit(), 0);
    EXPECT_EQ(version.Output(), "port-sample " APPLIST_VERSION "\n");
}

TEST(Lifecycle, TakesAnOptionInExtraDataAsText) {
    SampleProcess sample({"--no-window", "--exit-in", "launch", "--extra", "--help"});
    EXPECT_EQ(sample.WaitForExit(), 0);
    EXPECT_EQ(sample.Output().find("create\n"), 0U);
}

TEST(Lifecycle, SendsEveryLogLineThroughTheLogAndHidesTheExpectedComplaint) {
    SampleProcess sample({"--no-window", "--exit-in", "launch", "--complain"});
    EXPECT_EQ(sample.WaitForExit(), 0);
    const std::string& errors = sample.Errors();
    EXPECT_EQ(errors.find("g_bus_unwatch_name"), std::string::npos) << errors;
    EXPECT_NE(errors.find("GLib-GIO error: Invalid id 4711 passed to someone else\n"),
              std::string::npos)
        << errors;
    EXPECT_NE(errors.find("Complain() the toolkit complains\n"), std::string::npos) << errors;
    EXPECT_NE(errors.find("] an error line\n"), std::string::npos) << errors;
    EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), 3) << errors;
}

TEST(Lifecycle, ShowsTheExpectedComplaintAtDebug) {
    SampleProcess sample({"--no-window", "--exit-in", "launch", "--complain"},
                         {{"APPLIST_LOG", "debug"}});
    EXPECT_EQ(sample.WaitForExit(), 0);
    const std::string& errors = sample.Errors();
    EXPECT_NE(errors.find("GLib-GIO debug: Invalid id 4711 passed to g_bus_unwatch_name()\n"),
              std::string::npos)
        << errors;
    EXPECT_NE(errors.find("] a debug line\n"), std::string::npos) << errors;
    EXPECT_NE(errors.find("] an info line\n"), std::string::npos) << errors;
}

}  // namespace
}  // namespace applist::test
