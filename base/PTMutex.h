// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <pthread.h>

/// A POSIX mutex with default attributes: not recursive, so locking it twice from one thread
/// deadlocks. Any thread.
class PTMutex {
public:
    PTMutex() { pthread_mutex_init(&m_mutex, nullptr); }
    ~PTMutex() { pthread_mutex_destroy(&m_mutex); }
    PTMutex(const PTMutex&) = delete;
    PTMutex& operator=(const PTMutex&) = delete;
    PTMutex(PTMutex&&) = delete;
    PTMutex& operator=(PTMutex&&) = delete;

    void Lock() { pthread_mutex_lock(&m_mutex); }
    void Unlock() { pthread_mutex_unlock(&m_mutex); }

    /// Locks the mutex if it is free, without waiting. Returns true if it was locked.
    bool TryLock() { return pthread_mutex_trylock(&m_mutex) == 0; }

private:
    pthread_mutex_t m_mutex;
};

/// Locks a PTMutex in the constructor and unlocks it in the destructor. The mutex must outlive this
/// object.
class [[nodiscard]] PTAutoLock {
public:
    explicit PTAutoLock(PTMutex& mutex) : m_mutex(mutex) { m_mutex.Lock(); }
    ~PTAutoLock() { m_mutex.Unlock(); }
    PTAutoLock(const PTAutoLock&) = delete;
    PTAutoLock& operator=(const PTAutoLock&) = delete;
    PTAutoLock(PTAutoLock&&) = delete;
    PTAutoLock& operator=(PTAutoLock&&) = delete;

private:
    PTMutex& m_mutex;
};
