// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The built program and the simulated middleware on a real bus and a real screen, operated with
// real keys.
#include <csignal>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/Television.h"

namespace applist::test {
namespace {

using testing::Each;
using testing::IsEmpty;
using testing::StartsWith;

// The lines on standard error, without the one that a thread of the toolkit prints when it wakes up
// late on a busy machine.
std::vector<std::string> ErrorLines(const ChildProcess& process) {
    std::vector<std::string> kept;
    std::istringstream lines(process.Errors());
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind("ERROR: ecore_animator thread - epoll_wait(", 0) != 0) {
            kept.push_back(line);
        }
    }
    return kept;
}

class TheList : public testing::Test {
protected:
    void SetUp() override { m_set.ShowThreeItems(); }

    void Press(const std::string& key) { m_set.screen().TypeKey(key); }

    testing::AssertionResult Selected(const std::string& id, const std::string& name) {
        if (m_set.middleware().SeesSelected(id, name)) {
            return testing::AssertionSuccess();
        }
        return testing::AssertionFailure() << "the middleware saw:\n"
                                           << m_set.middleware().Transcript();
    }

    Television m_set;
};

TEST_F(TheList, FollowsTheKeysAndWrapsBothWays) {
    const char* const steps[][3] = {
        {"Down", "b", "Bravo"}, {"Down", "c", "Charlie"}, {"Down", "a", "Alpha"},
        {"Up", "c", "Charlie"}, {"Right", "a", "Alpha"},  {"Left", "c", "Charlie"},
        {"Left", "b", "Bravo"}, {"Up", "a", "Alpha"},     {"Right", "b", "Bravo"},
    };
    for (const auto& [key, id, name] : steps) {
        Press(key);
        EXPECT_TRUE(Selected(id, name));
    }
}

TEST_F(TheList, ReportsTheActivatedRowAndEnds) {
    Press("Down");
    ASSERT_TRUE(Selected("b", "Bravo"));
    Press("Return");
    EXPECT_TRUE(m_set.middleware().Sees("event 3 ItemClicked"));
    EXPECT_TRUE(m_set.middleware().Sees("disconnected"));
    EXPECT_EQ(m_set.application().WaitForExit(), 0);
}

TEST_F(TheList, PrintsOnlyItsVersionOnANormalRun) {
    Press("Down");
    ASSERT_TRUE(Selected("b", "Bravo"));
    Press("Escape");
    ASSERT_EQ(m_set.application().WaitForExit(), 0);
    EXPECT_EQ(m_set.application().Output(), "APPLIST v: plm-applist-20150201.1\n");
    EXPECT_THAT(ErrorLines(m_set.application()), IsEmpty());
}

/// Situations in which the toolkit might log errors.
class ASilentList : public testing::Test {
protected:
    void Show(int rows) {
        std::string items;
        for (int row = 0; row < rows; ++row) {
            items += "id" + std::to_string(row) + "\tRow " + std::to_string(row) + "\n";
        }
        m_set.Show(items);
        ASSERT_TRUE(m_set.middleware().SeesSelected("id0", "Row 0"));
        ASSERT_TRUE(m_set.WaitForFocusedRow());
    }
    void Call(const std::vector<std::string>& call) {
        ASSERT_EQ(m_set.StartMiddleware(call)->process().WaitForExit(), 0);
    }
    void ExpectSilence() {
        ASSERT_TRUE(m_set.WaitForFocusedRow());
        m_set.screen().TypeKey("Escape");
        ASSERT_EQ(m_set.application().WaitForExit(), 0);
        // Only the program's own lines are allowed, about the tool that connected, called and
        // disconnected.
        EXPECT_THAT(ErrorLines(m_set.application()),
                    Each(StartsWith("applist error: javamw-dbus-local.cpp: ")));
    }

    Television m_set;
};

TEST_F(ASilentList, SelectsARowThatIsOutOfSight) {
    Show(100);
    Call({"call", "SetSelection", "id77"});
    ASSERT_TRUE(m_set.middleware().SeesSelected("id77", "Row 77"));
    m_set.screen().TypeKey("Down");
    ASSERT_TRUE(m_set.middleware().SeesSelected("id78", "Row 78"));
    ExpectSilence();
}

TEST_F(ASilentList, WasEmptiedAndFilledAgain) {
    Show(3);
    Call({"call", "RemoveAllItems"});
    Call({"call", "AddItems", "p=Papa", "q=Quebec"});
    ASSERT_TRUE(m_set.middleware().SeesSelected("p", "Papa"));
    ExpectSilence();
}

// A change that a key's frame does not show starts the thread that times the toolkit's frames.
TEST_F(ASilentList, DrawsAKeyThatScrollsInOneFrame) {
    const std::string timer = "Eanimator-timer";
    Show(30);
    ASSERT_TRUE(m_set.application().WaitForRest(std::chrono::seconds(1)));
    const long frames = m_set.application().Sleeps(timer);
    for (int row = 1; row <= 20; ++row) {
        m_set.screen().TypeKey("Down");
        const std::string number = std::to_string(row);
        ASSERT_TRUE(m_set.middleware().SeesSelected("id" + number, "Row " + number));
    }
    ASSERT_TRUE(m_set.application().WaitForRest(std::chrono::seconds(1)));
    EXPECT_EQ(m_set.application().Sleeps(timer), frames);
}

TEST_F(TheList, ClosesWhenStartedASecondTime) {
    const auto second = m_set.StartApplication();
    EXPECT_EQ(second->WaitForExit(), 0);
    EXPECT_EQ(m_set.application().WaitForExit(), 0);
}

TEST(ASet, PassesTheScenarioOfANormalSession) {
    const char* const source = std::getenv("APPLIST_SOURCE");
    Television set;
    const auto application = set.StartApplication();
    const auto scenario =
        set.StartMiddleware({"run", std::string(source != nullptr ? source : ".") +
                                        "/tools/javamw-sim/scenarios/normal-session.scenario"});
    EXPECT_EQ(scenario->process().WaitForExit(), 0)
        << scenario->Transcript() << scenario->process().Errors();
    ASSERT_TRUE(set.WaitForWindow());
    set.screen().TypeKey("Escape");
    EXPECT_EQ(application->WaitForExit(), 0);
}

TEST(ASet, ShowsTheListWhenStandardOutputHasNoReader) {
    Television set;
    const auto application =
        set.StartApplication({"bash", "-c", R"(exec 3> >(:); wait $!; exec "$@" >&3)", "bash"});
    ASSERT_TRUE(set.WaitForWindow()) << application->Errors();
    set.screen().TypeKey("Escape");
    EXPECT_EQ(application->WaitForExit(), 0);
}

TEST(ASet, EndsCleanlyWithoutASystemBus) {
    Television set;
    set.systemBus().Stop();
    const auto application = set.StartApplication();
    ASSERT_TRUE(set.WaitForWindow());
    EXPECT_TRUE(application->WaitForText("Error while connecting to system bus ["));
    set.screen().TypeKey("Escape");
    EXPECT_EQ(application->WaitForExit(), 0);
}

}  // namespace
}  // namespace applist::test
