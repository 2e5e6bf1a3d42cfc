// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Events while the list starts or ends: calls, launches, the loss of the screen.
#include <algorithm>
#include <csignal>

#include <gmock/gmock.h>

#include "e2e/faults/FaultTest.h"

namespace applist::test {
namespace {

using sim::Function;
using testing::HasSubstr;
using testing::Optional;

constexpr int CANNOT_REACH_DISPLAY = 250;
constexpr int NO_DISPLAY = 101;

using AnEnd = FaultTest;

// Every call gets a reply or an error, wherever the end falls among them.
TEST_F(AnEnd, MayComeBetweenAnyCalls) {
    constexpr int ENDS = 5;
    constexpr size_t CALLS = 300;
    const auto middleware = NewMiddleware();
    for (int end = 0; end < ENDS && !HasFailure(); ++end) {
        StartApplication();
        ASSERT_TRUE(middleware->AwaitApplication());
        ASSERT_TRUE(middleware->Ask(Function::AddItems, THREE));
        ASSERT_TRUE(m_set.WaitForFocusedRow());
        const size_t before = middleware->Answered() + middleware->Failed();
        for (size_t call = 0; call < CALLS; ++call) {
            if (call == CALLS / 3) {
                application().Signal(SIGTERM);
            }
            middleware->Call(Function::AddItemAtEnd, {{"n" + std::to_string(call), "New"}});
        }
        EXPECT_TRUE(middleware->AwaitReplies());
        EXPECT_EQ(middleware->Answered() + middleware->Failed(), before + CALLS);
        EXPECT_EQ(application().WaitForExit(), 0) << Log();
        EXPECT_TRUE(middleware->AwaitDisconnection());
    }
    EXPECT_GT(middleware->Answered(), 0U);
    EXPECT_GT(middleware->Failed(), 0U);
}

class TheDisplayServer : public FaultTest {
protected:
    // The toolkit calls exit() itself, so that everything still allocated would count as a leak.
    TheDisplayServer() : FaultTest({{"ASAN_OPTIONS", "detect_leaks=0"}}) {}
};

// Without its display the toolkit logs an error and ends the program with its own exit status.
TEST_F(TheDisplayServer, EndsTheListWhenItStopsAndTheNextListUsesAnother) {
    ASSERT_NO_FATAL_FAILURE(ShowThree());
    const auto middleware = NewMiddleware();
    ASSERT_TRUE(middleware->AwaitApplication());
    m_set.screen().Stop();
    EXPECT_EQ(application().WaitForExit(), NO_DISPLAY) << Log();
    EXPECT_THAT(Log(), HasSubstr("X I/O Error"));
    EXPECT_TRUE(middleware->AwaitDisconnection());
    XDisplay other({"openbox", "picom"});
    auto environment = m_set.Environment();
    environment["DISPLAY"] = other.Name();
    ChildProcess next({BuiltProgram("applist")}, environment);
    ASSERT_TRUE(middleware->AwaitApplication());
    ASSERT_TRUE(middleware->Ask(Function::AddItems, THREE));
    EXPECT_THAT(middleware->Ask(Function::GetAllItems), Optional(THREE));
    ASSERT_TRUE(other.WaitUntil([&other] { return other.HasKeyboard(Television::LIST); }));
    other.TypeKey("F10");
    EXPECT_EQ(next.WaitForExit(), 0) << next.Errors();
}

// After the handshake and its events a middleware would fill a list that is never shown.
TEST_F(TheDisplayServer, IsReachedBeforeTheListConnects) {
    const auto middleware = NewMiddleware();
    auto environment = m_set.Environment();
    for (const char* display : {":7654", ""}) {
        environment["DISPLAY"] = display;
        ChildProcess list({BuiltProgram("applist")}, environment);
        EXPECT_EQ(list.WaitForExit(), CANNOT_REACH_DISPLAY) << list.Errors();
        EXPECT_THAT(list.Errors(), HasSubstr("Cannot reach a display"));
        EXPECT_THAT(list.Errors(), HasSubstr("app_main() is failed. err = -6"));
        EXPECT_EQ(std::count(list.Errors().begin(), list.Errors().end(), '\n'), 2) << list.Errors();
    }
    EXPECT_EQ(middleware->Events(sim::Event::LocalCreated), 0U);
}

/// Makes the n-th call of one kind fail during the start.
class AFailingCall : public FaultTest {
protected:
    // strace and the leak checker both need ptrace.
    AFailingCall() : FaultTest({{"ASAN_OPTIONS", "detect_leaks=0"}}) {}

    void StartWithFailure(const std::string& call, const std::string& error, int number) {
        StartApplication(
            {"strace", "-D", "-qq", "-o", "/dev/null", "-e", "trace=" + call, "-e",
             "inject=" + call + ":error=" + error + ":when=" + std::to_string(number)});
    }
};

// The higher the number, the later the connection breaks during the start of the first window.
TEST_F(AFailingCall, ThatLosesTheDisplayIsReportedOnce) {
    struct Failure {
        const char* call;
        const char* error;
        int number;
    };
    // The first three writes come before the toolkit has its own connection.
    for (const auto& [call, error, number] :
         {Failure{"recvmsg", "ECONNRESET", 60}, Failure{"recvmsg", "ECONNRESET", 400},
          Failure{"writev", "EPIPE", 4}, Failure{"writev", "EPIPE", 11},
          Failure{"writev", "EPIPE", 28}}) {
        SCOPED_TRACE(std::string(call) + " " + std::to_string(number));
        StartWithFailure(call, error, number);
        EXPECT_EQ(application().WaitForExit(), NO_DISPLAY) << Log();
        const std::string log = Log();
        EXPECT_THAT(log, HasSubstr("The connection to the X server is lost"));
        EXPECT_EQ(std::count(log.begin(), log.end(), '\n'), 1) << log;
    }
}

// The program asks the server once on a separate connection; the toolkit then asks again.
TEST_F(AFailingCall, OfTheFirstQuestionsToTheDisplayLeavesTheList) {
    for (int number = 1; number <= 2; ++number) {
        StartWithFailure("writev", "EPIPE", number);
        ASSERT_TRUE(m_set.WaitForWindow()) << Log();
        EXPECT_EQ(Log(), "");
        application().Signal(SIGTERM);
        EXPECT_EQ(application().WaitForExit(), 0);
    }
}

// The third write asks the X server for the toolkit's connection.
TEST_F(AFailingCall, ThatKeepsTheDisplayFromAnsweringIsReported) {
    StartWithFailure("writev", "EPIPE", 3);
    EXPECT_EQ(application().WaitForExit(), CANNOT_REACH_DISPLAY) << Log();
    EXPECT_THAT(Log(), HasSubstr("Cannot reach a display"));
}

TEST_F(AFailingCall, LeavesAListThatASignalEnds) {
    for (int number = 2; number <= 5; ++number) {
        StartWithFailure("pipe2", "EMFILE", number);
        ASSERT_TRUE(m_set.WaitForWindow()) << Log();
        application().Signal(SIGTERM);
        EXPECT_EQ(application().WaitForExit(), 0) << Log();
    }
}

using ASecondLaunch = FaultTest;

// Two applications start at once. One of them counts as the second and closes the first.
TEST_F(ASecondLaunch, ClosesTheListAlsoWhileThatStarts) {
    constexpr int TIMES = 5;
    for (int time = 0; time < TIMES && !HasFailure(); ++time) {
        const auto one = m_set.StartApplication();
        const auto two = m_set.StartApplication();
        EXPECT_EQ(one->WaitForExit(), 0) << one->Errors();
        EXPECT_EQ(two->WaitForExit(), 0) << two->Errors();
    }
    ASSERT_NO_FATAL_FAILURE(ShowThree());
    ExpectCleanEnd();
}

// The second application starts while the first one waits for a system bus that does not answer.
TEST_F(ASecondLaunch, ClosesAListThatIsHeldUpInItsStart) {
    m_set.systemBus().Freeze();
    const auto first = m_set.StartApplication();
    ASSERT_TRUE(first->WaitForText("APPLIST v:"));
    const auto second = m_set.StartApplication();
    ASSERT_TRUE(second->WaitForText("APPLIST v:"));
    m_set.systemBus().Thaw();
    EXPECT_EQ(first->WaitForExit(), 0) << first->Errors();
    EXPECT_EQ(second->WaitForExit(), 0) << second->Errors();
    ASSERT_NO_FATAL_FAILURE(ShowThree());
    ExpectCleanEnd();
}

}  // namespace
}  // namespace applist::test
