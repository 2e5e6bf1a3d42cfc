// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <thread>

#include <gtest/gtest.h>

#include "PTMutex.h"

namespace applist::test {
namespace {

bool FreeForAnotherThread(PTMutex& mutex) {
    bool taken = false;
    std::thread other([&] {
        taken = mutex.TryLock();
        if (taken) {
            mutex.Unlock();
        }
    });
    other.join();
    return taken;
}

TEST(PTMutex, IsFreeAtFirst) {
    PTMutex mutex;
    EXPECT_TRUE(FreeForAnotherThread(mutex));
}

TEST(PTMutex, KeepsOthersOutWhileLocked) {
    PTMutex mutex;
    mutex.Lock();
    EXPECT_FALSE(FreeForAnotherThread(mutex));
    mutex.Unlock();
    EXPECT_TRUE(FreeForAnotherThread(mutex));
}

TEST(PTMutex, IsTakenByASuccessfulTry) {
    PTMutex mutex;
    ASSERT_TRUE(mutex.TryLock());
    EXPECT_FALSE(FreeForAnotherThread(mutex));
    mutex.Unlock();
}

TEST(PTMutex, IsNotRecursive) {
    PTMutex mutex;
    mutex.Lock();
    EXPECT_FALSE(mutex.TryLock());
    mutex.Unlock();
}

TEST(PTAutoLock, HoldsTheMutexForItsScope) {
    PTMutex mutex;
    {
        const PTAutoLock lock(mutex);
        EXPECT_FALSE(FreeForAnotherThread(mutex));
    }
    EXPECT_TRUE(FreeForAnotherThread(mutex));
}

}  // namespace
}  // namespace applist::test
