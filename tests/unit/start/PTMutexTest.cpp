// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <future>

#include <gtest/gtest.h>

#include "PTMutex.h"

namespace {

bool OtherThreadCanLock(PTMutex& mutex) {
    return std::async(std::launch::async,
                      [&mutex] {
                          const bool locked = mutex.TryLock();
                          if (locked) {
                              mutex.Unlock();
                          }
                          return locked;
                      })
        .get();
}

TEST(PTMutex, TriesInVainWhileAnotherHoldsIt) {
    PTMutex mutex;
    mutex.Lock();
    EXPECT_FALSE(OtherThreadCanLock(mutex));
    mutex.Unlock();
    EXPECT_TRUE(OtherThreadCanLock(mutex));
}

TEST(PTMutex, IsTakenByASuccessfulTry) {
    PTMutex mutex;
    ASSERT_TRUE(mutex.TryLock());
    EXPECT_FALSE(OtherThreadCanLock(mutex));
    mutex.Unlock();
}

TEST(PTMutex, IsNotRecursive) {
    PTMutex mutex;
    ASSERT_TRUE(mutex.TryLock());
    EXPECT_FALSE(mutex.TryLock());
    mutex.Unlock();
}

TEST(PTAutoLock, HoldsTheMutexForItsScope) {
    PTMutex mutex;
    {
        const PTAutoLock lock(mutex);
        EXPECT_FALSE(OtherThreadCanLock(mutex));
    }
    EXPECT_TRUE(OtherThreadCanLock(mutex));
}

TEST(PTAutoLock, WaitsForTheHolder) {
    PTMutex mutex;
    bool guarded = false;
    mutex.Lock();
    auto waiter = std::async(std::launch::async, [&] {
        const PTAutoLock lock(mutex);
        return guarded;
    });
    guarded = true;
    mutex.Unlock();
    EXPECT_TRUE(waiter.get());
}

}  // namespace
