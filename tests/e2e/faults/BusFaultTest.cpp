// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// A system bus that dies or hangs while the list is on the screen.
#include <gmock/gmock.h>

#include "e2e/faults/FaultTest.h"

namespace applist::test {
namespace {

using sim::Function;
using testing::HasSubstr;

constexpr const char* LOSS = "Connection to system bus lost [";

using TheBus = FaultTest;

TEST_F(TheBus, EndsTheListWithALineInItsLogWhenItDies) {
    ASSERT_NO_FATAL_FAILURE(ShowThree());
    m_set.systemBus().Stop();
    EXPECT_EQ(application().WaitForExit(), 0);
    EXPECT_THAT(Log(), HasSubstr(LOSS));
    EXPECT_EQ(application().Output(), "APPLIST v: plm-applist-20150201.1\n");
}

TEST_F(TheBus, MayHangForAWhile) {
    ASSERT_NO_FATAL_FAILURE(ShowThree());
    const auto middleware = NewMiddleware();
    ASSERT_TRUE(middleware->AwaitApplication());
    m_set.systemBus().Freeze();
    m_set.screen().TypeKey("Down");
    middleware->Call(Function::AddItemAtEnd, {{"d", "Delta"}});
    m_set.systemBus().Thaw();
    ASSERT_TRUE(middleware->AwaitReplies());
    sim::Items four = THREE;
    four.push_back({"d", "Delta"});
    ExpectList(*middleware, four);
    ExpectCleanEnd();
}

TEST_F(TheBus, DoesNotKeepTheViewerWhenItHangs) {
    ASSERT_NO_FATAL_FAILURE(ShowThree());
    m_set.systemBus().Freeze();
    ExpectCleanEnd();  // or the test hangs
}

TEST_F(TheBus, EndsTheListWhenItHangsAndThenDies) {
    ASSERT_NO_FATAL_FAILURE(ShowThree());
    m_set.systemBus().Freeze();
    m_set.screen().TypeKey("Down");
    m_set.systemBus().Stop();
    EXPECT_EQ(application().WaitForExit(), 0);
    EXPECT_THAT(Log(), HasSubstr(LOSS));
}

}  // namespace
}  // namespace applist::test
