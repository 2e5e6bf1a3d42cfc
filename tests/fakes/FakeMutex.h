// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <pthread.h>
#include <string>
#include <vector>

/// The mutexes of the code under test as a history. Linking it sends the calls of
/// pthread_mutex_init(), _destroy(), _lock(), _trylock() and _unlock() in the test program through
/// the recorder, which passes them on.
namespace applist::test {

struct FakeMutex {
    /// Every call for a mutex that was initialised since the last start, oldest first: "init",
    /// "init with attributes", "lock", "trylock", "unlock", "destroy".
    std::vector<std::string> calls;
    /// The mutexes that exist, and how many of these are locked.
    std::vector<const pthread_mutex_t*> alive;
    int held = 0;
};

/// The one recorder of the process; tests assign FakeMutex{} to start afresh. Single thread only.
FakeMutex& TheMutexes();

}  // namespace applist::test
