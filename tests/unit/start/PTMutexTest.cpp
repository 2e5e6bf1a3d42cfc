// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "PTMutex.h"
#include "fakes/FakeMutex.h"

namespace applist::test {
namespace {

using testing::ElementsAre;

class MutexTest : public testing::Test {
protected:
    MutexTest() { TheMutexes() = {}; }
};
using PTMutexCalls = MutexTest;
using PTAutoLockCalls = MutexTest;

TEST_F(PTMutexCalls, MakeAMutexWithDefaultAttributesAndDestroyIt) {
    { const PTMutex mutex; }
    EXPECT_THAT(TheMutexes().calls, ElementsAre("init", "destroy"));
}

TEST_F(PTMutexCalls, LockAndUnlockThePosixMutex) {
    PTMutex mutex;
    mutex.Lock();
    mutex.Unlock();
    EXPECT_THAT(TheMutexes().calls, ElementsAre("init", "lock", "unlock"));
}

TEST_F(PTMutexCalls, ReportWhetherATryTookTheLock) {
    PTMutex mutex;
    EXPECT_TRUE(mutex.TryLock());
    EXPECT_FALSE(mutex.TryLock());
    mutex.Unlock();
    EXPECT_TRUE(mutex.TryLock());
    mutex.Unlock();
    EXPECT_THAT(TheMutexes().calls,
                ElementsAre("init", "trylock", "trylock", "unlock", "trylock", "unlock"));
}

TEST_F(PTAutoLockCalls, WaitForTheMutexAndFreeItAtTheEndOfTheScope) {
    PTMutex mutex;
    {
        const PTAutoLock lock(mutex);
        EXPECT_THAT(TheMutexes().calls, ElementsAre("init", "lock"));
    }
    EXPECT_THAT(TheMutexes().calls, ElementsAre("init", "lock", "unlock"));
}

}  // namespace
}  // namespace applist::test
