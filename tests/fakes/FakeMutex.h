// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <pthread.h>
#include <string>
#include <vector>

/// Records the mutex calls of the code under test. Linking it routes the calls of
/// pthread_mutex_init(), _destroy(), _lock(), _trylock() and _unlock() in the test program through
/// the recorder, which forwards them.
namespace applist::test {

struct FakeMutex {
    /// Every call on a mutex that was initialised since the last start, oldest first: "init", "init
    /// with attributes", "lock", "trylock", "unlock", "destroy".
    std::vector<std::string> calls;
    /// The number of existing mutexes, and how many of them are locked.
    std::vector<const pthread_mutex_t*> alive;
    int held = 0;
};

/// The one recorder of the process; tests assign FakeMutex{} to reset it. Single thread only.
FakeMutex& TheMutexes();

}  // namespace applist::test
