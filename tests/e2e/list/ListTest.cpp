// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The built program and the simulated middleware on a real bus and a real screen, operated with
// real keys.
#include <csignal>
#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/Television.h"

namespace applist::test {
namespace {

using testing::Each;
using testing::HasSubstr;
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

TEST_F(TheList, ReportsEachStepDownAndUp) {
    Press("Down");
    EXPECT_TRUE(Selected("b", "Bravo"));
    Press("Down");
    EXPECT_TRUE(Selected("c", "Charlie"));
    Press("Up");
    EXPECT_TRUE(Selected("b", "Bravo"));
}

TEST_F(TheList, WrapsFromTheLastRowDownToTheFirst) {
    Press("Down");
    Press("Down");
    ASSERT_TRUE(Selected("c", "Charlie"));
    Press("Down");
    EXPECT_TRUE(Selected("a", "Alpha"));
}

TEST_F(TheList, WrapsFromTheFirstRowUpToTheLast) {
    Press("Up");
    EXPECT_TRUE(Selected("c", "Charlie"));
}

TEST_F(TheList, StepsForwardOnRightAndWraps) {
    Press("Right");
    EXPECT_TRUE(Selected("b", "Bravo"));
    Press("Right");
    EXPECT_TRUE(Selected("c", "Charlie"));
    Press("Right");
    EXPECT_TRUE(Selected("a", "Alpha"));
}

TEST_F(TheList, StepsBackOnLeftAndWraps) {
    Press("Left");
    EXPECT_TRUE(Selected("c", "Charlie"));
    Press("Left");
    EXPECT_TRUE(Selected("b", "Bravo"));
}

TEST_F(TheList, KeepsScreenAndModelTogetherWhenBothKindsOfKeysMix) {
    Press("Right");
    EXPECT_TRUE(Selected("b", "Bravo"));
    Press("Down");
    EXPECT_TRUE(Selected("c", "Charlie"));
    Press("Left");
    EXPECT_TRUE(Selected("b", "Bravo"));
    Press("Up");
    EXPECT_TRUE(Selected("a", "Alpha"));
}

TEST_F(TheList, ReportsTheActivatedRowAndEnds) {
    Press("Down");
    ASSERT_TRUE(Selected("b", "Bravo"));
    Press("Return");
    EXPECT_TRUE(m_set.middleware().Sees("event 3 ItemClicked"));
    EXPECT_TRUE(m_set.middleware().Sees("disconnected"));
    EXPECT_EQ(m_set.application().WaitForExit(), 0);
}

TEST_F(TheList, ClosesOnBack) {
    Press("Escape");
    EXPECT_EQ(m_set.application().WaitForExit(), 0);
}

TEST_F(TheList, ClosesOnExit) {
    Press("F10");
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

TEST_F(ASilentList, HasOneRow) {
    Show(1);
    ExpectSilence();
}

TEST_F(ASilentList, WasFilledBeforeItsWindowGotTheFocus) {
    m_set.Show("a\tAlpha\nb\tBravo\n");
    ExpectSilence();
}

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

TEST_F(TheList, EndsLikeOnExitWhenTerminated) {
    m_set.application().Signal(SIGTERM);
    EXPECT_EQ(m_set.application().WaitForExit(), 0);
}

TEST_F(TheList, ClosesWhenStartedASecondTime) {
    const auto second = m_set.StartApplication();
    EXPECT_EQ(second->WaitForExit(), 0);
    EXPECT_EQ(m_set.application().WaitForExit(), 0);
}

TEST_F(TheList, FollowsAMiddlewareThatRestarts) {
    m_set.middleware().process().Signal(SIGKILL);
    m_set.middleware().process().WaitForExit();
    const auto next = m_set.StartMiddleware(
        {"serve", "--items", m_set.WriteFile("next", "x\tX-ray\ny\tYankee\n")});
    ASSERT_TRUE(next->SeesSelected("x", "X-ray")) << next->Transcript();
    Press("Down");
    EXPECT_TRUE(next->SeesSelected("y", "Yankee")) << next->Transcript();
}

TEST_F(TheList, TakesKeysAfterItWasEmptiedAndFilledAgain) {
    const auto emptied = m_set.StartMiddleware({"call", "RemoveAllItems"});
    ASSERT_EQ(emptied->process().WaitForExit(), 0);
    ASSERT_TRUE(m_set.WaitForNoFocusedRow());
    const auto filled = m_set.StartMiddleware({"call", "AddItems", "p=Papa", "q=Quebec"});
    ASSERT_EQ(filled->process().WaitForExit(), 0);
    ASSERT_TRUE(Selected("p", "Papa"));
    Press("Down");
    EXPECT_TRUE(Selected("q", "Quebec"));
    Press("Right");
    EXPECT_TRUE(Selected("p", "Papa"));
}

TEST_F(TheList, MovesTheFocusToTheItemThatTheMiddlewareSelects) {
    const auto call = m_set.StartMiddleware({"call", "SetSelection", "b"});
    ASSERT_EQ(call->process().WaitForExit(), 0);
    ASSERT_TRUE(Selected("b", "Bravo"));
    Press("Down");
    EXPECT_TRUE(Selected("c", "Charlie"));
}

TEST(ASet, ConnectsWhenTheApplicationIsFirst) {
    Television set;
    const auto application = set.StartApplication();
    ASSERT_TRUE(set.WaitForWindow());
    const auto middleware = set.StartMiddlewareWithThreeItems();
    EXPECT_TRUE(middleware->SeesSelected("a", "Alpha")) << middleware->Transcript();
    ASSERT_TRUE(set.WaitForFocusedRow());
    set.screen().TypeKey("Down");
    EXPECT_TRUE(middleware->SeesSelected("b", "Bravo")) << middleware->Transcript();
}

TEST(ASet, ServesTheNextApplicationAfterTheFirstHasEnded) {
    Television set;
    set.ShowThreeItems();
    set.screen().TypeKey("Escape");
    ASSERT_EQ(set.application().WaitForExit(), 0);
    ASSERT_TRUE(set.middleware().Sees("disconnected"));
    const auto next = set.StartApplication();
    EXPECT_TRUE(set.middleware().SeesSelected("a", "Alpha")) << set.middleware().Transcript();
    next->Signal(SIGTERM);
    EXPECT_EQ(next->WaitForExit(), 0);
}

TEST(ASet, ShowsTheListWhenStandardOutputHasNoReader) {
    Television set;
    const auto application =
        set.StartApplication({"bash", "-c", R"(exec 3> >(:); wait $!; exec "$@" >&3)", "bash"});
    ASSERT_TRUE(set.WaitForWindow()) << application->Errors();
    set.screen().TypeKey("Escape");
    EXPECT_EQ(application->WaitForExit(), 0);
}

// The application's clock runs 50 times as fast, and the test presses no key.
TEST(ASet, ClosesTheListAfterItsTimeLimitWithoutAKey) {
    Television set(ChildProcess::Environment{{"APPLIST_LOG", "debug"}});
    const auto application = set.StartApplication({"faketime", "-f", "+0 x50"});
    EXPECT_EQ(application->WaitForExit(), 0);
    EXPECT_THAT(application->Errors(), HasSubstr("Executed timer function"));
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
