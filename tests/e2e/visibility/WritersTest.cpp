// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <csignal>

#include <gmock/gmock.h>

#include "e2e/visibility/Platformctl.h"

namespace applist::test {
namespace {

constexpr int KILLED = 128 + SIGKILL;

ChildProcess::Environment Trapped(const std::string& step, const std::string& action) {
    return {{"LD_PRELOAD", WRITE_TRAP}, {"APPLIST_TRAP", step}, {"APPLIST_TRAP_DO", action}};
}

class AKilledWriter : public Platformctl, public testing::WithParamInterface<std::string> {};

TEST_P(AKilledWriter, LeavesTheOldStateOrTheNewOne) {
    Do({"set", DATA_SERVICE, "int", "2"});
    Do({"set", AUTOSTART, "int", "1"});
    const auto killed = Run({"set", DATA_SERVICE, "int", "6"}, Trapped(GetParam(), "kill"));
    ASSERT_EQ(killed.status, KILLED);
    EXPECT_EQ(Get(DATA_SERVICE), GetParam() == "renamed" ? "6\n" : "2\n");
    EXPECT_EQ(Get(AUTOSTART), "1\n");
    // The next one writes.
    Do({"set", AUTOSTART, "int", "0"});
    EXPECT_EQ(Get(AUTOSTART), "0\n");
}

TEST_P(AKilledWriter, OfTheRegionLeavesTheRegion) {
    Do({"region", "italy"});
    ASSERT_EQ(Run({"region", "brazil"}, Trapped(GetParam(), "kill")).status, KILLED);
    EXPECT_EQ(Run({"factory", "get", "194"}).output, GetParam() == "renamed" ? "81\n" : "8\n");
}

INSTANTIATE_TEST_SUITE_P(AtEachStep, AKilledWriter,
                         testing::Values("write", "fsync", "rename", "renamed"),
                         [](const auto& step) { return step.param; });

using Writers = Platformctl;

TEST_F(Writers, AtOnceLoseNoUpdate) {
    Do({"set", DATA_SERVICE, "int", "0"});
    ChildProcess first(CommandOf({"set", DATA_SERVICE, "int", "2"}), Trapped("rename", "wait"));
    ASSERT_TRUE(first.WaitForText("trapped"));
    ChildProcess second(CommandOf({"set", AUTOSTART, "int", "1"}), Trapped("", ""));
    ASSERT_TRUE(second.WaitForText("waiting for the lock"));
    first.Signal(SIGUSR1);
    EXPECT_EQ(first.WaitForExit(), 0);
    EXPECT_EQ(second.WaitForExit(), 0);
    EXPECT_EQ(Get(DATA_SERVICE), "2\n");
    EXPECT_EQ(Get(AUTOSTART), "1\n");
}

TEST_F(Writers, DoNotKeepReadersWaiting) {
    Do({"set", DATA_SERVICE, "int", "1"});
    for (const char* step : {"write", "fsync", "rename"}) {
        ChildProcess writer(CommandOf({"set", DATA_SERVICE, "int", "2"}), Trapped(step, "wait"));
        ASSERT_TRUE(writer.WaitForText("trapped")) << step;
        EXPECT_EQ(Get(DATA_SERVICE), "1\n") << step;
        writer.Signal(SIGKILL);
        EXPECT_EQ(writer.WaitForExit(), KILLED);
    }
}

TEST_F(Writers, OfTheTwoKindsOfSettingsDoNotMeet) {
    ChildProcess first(CommandOf({"set", DATA_SERVICE, "int", "2"}), Trapped("rename", "wait"));
    ASSERT_TRUE(first.WaitForText("trapped"));
    Do({"set", AUTORUN, "bool", "true"});
    first.Signal(SIGUSR1);
    EXPECT_EQ(first.WaitForExit(), 0);
}

}  // namespace
}  // namespace applist::test
