// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// platform_log.h.
#include <array>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "conformance/Contract.h"
#include "conformance/SetUnderTest.h"
#include "platform_log.h"

namespace applist::test {
namespace {

class LogLines : public testing::Test {
protected:
    std::unique_ptr<SetUnderTest> m_set = MakeSet();
};

int Write(int priority, const char* text) {
    return __dlog_print(PLATFORM_LOG_MAIN, priority, "applist", "%s: %s(%d) > [%s:%d] %s",
                        "LogTest.cpp", "Write", 1, "Write", 1, text);
}

TEST_F(LogLines, AreTakenAtEveryPriority) {
    CONTRACT("platform_log.h", "__dlog_print()");
    for (const int priority : {PLATFORM_LOG_DEBUG, PLATFORM_LOG_INFO, PLATFORM_LOG_ERROR}) {
        EXPECT_GE(Write(priority, "a line of the conformance test"), 0) << priority;
    }
}

TEST_F(LogLines, MayBeLongEmptyOrSeveral) {
    CONTRACT("platform_log.h", "__dlog_print()");
    EXPECT_GE(Write(PLATFORM_LOG_ERROR, std::string(100'000, 'x').c_str()), 0);
    EXPECT_GE(Write(PLATFORM_LOG_ERROR, ""), 0);
    EXPECT_GE(Write(PLATFORM_LOG_ERROR, "two\nlines\n\n"), 0);
}

TEST_F(LogLines, MayComeFromSeveralThreadsAtOnce) {
    std::array<std::thread, 4> threads;
    for (std::thread& thread : threads) {
        thread = std::thread([] {
            // Traces of another thread do not apply here.
            CONTRACT("platform_log.h", "__dlog_print()");
            for (int line = 0; line < 50; ++line) {
                EXPECT_GE(Write(PLATFORM_LOG_ERROR, "a line of one thread"), 0);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

}  // namespace
}  // namespace applist::test
