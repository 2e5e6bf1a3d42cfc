// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <array>
#include <cstdint>
#include <optional>
#include <stdexcept>

#include <gmock/gmock.h>

#include "CallbackGuard.h"
#include "LittleEndian.h"
#include "Number.h"
#include "PTMutex.h"
#include "fakes/FakeMutex.h"
#include "fakes/FakePlatformLog.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace applist::test {
namespace {

TEST(LittleEndian, HasTheLeastSignificantByteFirst) {
    EXPECT_THAT(ToLittleEndian(0x12345678U), ElementsAre('\x78', '\x56', '\x34', '\x12'));
    EXPECT_THAT(ToLittleEndian(2000), ElementsAre('\xD0', '\x07', '\0', '\0'));
    EXPECT_EQ(FromLittleEndian(std::array{'\xFF', '\x80', '\0', '\xFF'}), 0xFF0080FFU);
    for (const std::uint32_t value : {0U, 1U, 0x7FU, 0x80U, 0xFFU, 0x100U, 0x80000000U, ~0U}) {
        EXPECT_EQ(FromLittleEndian(ToLittleEndian(value)), value);
    }
}

TEST(Number, IsTheWholeText) {
    EXPECT_EQ(ParseNumber("-2147483648"), INT32_MIN);
    EXPECT_EQ(ParseNumber<unsigned>("7"), 7U);
    for (const char* text : {"", "7 ", " 7", "+7", "7a", "--7", "7.0"}) {
        EXPECT_EQ(ParseNumber(text), std::nullopt) << text;
    }
}

TEST(Number, FitsItsType) {
    EXPECT_EQ(ParseNumber("2147483648"), std::nullopt);
    EXPECT_EQ(ParseNumber<unsigned>("-1"), std::nullopt);
    EXPECT_EQ(ParseNumber<std::uint8_t>("256"), std::nullopt);
}

TEST(Number, HasABaseOrAFraction) {
    EXPECT_EQ(ParseNumber<std::uint8_t>("fF", 16), 0xFF);
    EXPECT_EQ(ParseNumber<double>("0.5"), 0.5);
}

class CallbackGuard : public testing::Test {
protected:
    CallbackGuard() { ClearLog(); }
};

TEST_F(CallbackGuard, ReturnsTheResultOfABodyThatDoesNotThrow) {
    EXPECT_EQ(GuardCallback(1, [] { return 2; }), 2);
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(CallbackGuard, LogsAnExceptionAndReturnsTheFallback) {
    EXPECT_EQ(GuardCallback(1, []() -> int { throw std::runtime_error("a reason"); }), 1);
    EXPECT_EQ(GuardCallback(1, []() -> int { throw 2; }), 1);
    EXPECT_THAT(Log(), ElementsAre(Error("Callback aborted: a reason", "GuardCallback"),
                                   Error("Callback aborted: unknown exception", "GuardCallback")));
}

class MutexCalls : public testing::Test {
protected:
    MutexCalls() { TheMutexes() = {}; }
};

TEST_F(MutexCalls, CreateAMutexWithDefaultAttributesLockItAndDestroyIt) {
    {
        PTMutex mutex;
        mutex.Lock();
        mutex.Unlock();
    }
    EXPECT_THAT(TheMutexes().calls, ElementsAre("init", "lock", "unlock", "destroy"));
}

TEST_F(MutexCalls, ReportWhetherATryTookTheLock) {
    PTMutex mutex;
    EXPECT_TRUE(mutex.TryLock());
    EXPECT_FALSE(mutex.TryLock());
    mutex.Unlock();
    EXPECT_TRUE(mutex.TryLock());
    mutex.Unlock();
    EXPECT_THAT(TheMutexes().calls,
                ElementsAre("init", "trylock", "trylock", "unlock", "trylock", "unlock"));
}

TEST_F(MutexCalls, OfAScopedLockWaitForTheMutexAndFreeItAtTheEndOfTheScope) {
    PTMutex mutex;
    {
        const PTAutoLock lock(mutex);
        EXPECT_THAT(TheMutexes().calls, ElementsAre("init", "lock"));
    }
    EXPECT_THAT(TheMutexes().calls, ElementsAre("init", "lock", "unlock"));
}

}  // namespace
}  // namespace applist::test
