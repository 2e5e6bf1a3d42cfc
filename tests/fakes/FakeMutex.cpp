// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "fakes/FakeMutex.h"

#include <algorithm>

namespace applist::test {
namespace {

// Only mutexes initialised since the start are recorded, because the test framework has some, too.
bool IsRecorded(const pthread_mutex_t* mutex) {
    const auto& alive = TheMutexes().alive;
    return std::find(alive.begin(), alive.end(), mutex) != alive.end();
}

int Record(const pthread_mutex_t* mutex, const char* call, int heldMore, int result) {
    if (IsRecorded(mutex)) {
        TheMutexes().calls.emplace_back(call);
        TheMutexes().held += result == 0 ? heldMore : 0;
    }
    return result;
}

}  // namespace

FakeMutex& TheMutexes() {
    static FakeMutex mutexes;
    return mutexes;
}

}  // namespace applist::test

using applist::test::Record;
using applist::test::TheMutexes;

// The linker sends calls of NAME to __wrap_NAME, and of __real_NAME to the C library.
// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
extern "C" {
int __real_pthread_mutex_init(pthread_mutex_t* mutex, const pthread_mutexattr_t* attributes);
int __real_pthread_mutex_destroy(pthread_mutex_t* mutex);
int __real_pthread_mutex_lock(pthread_mutex_t* mutex);
int __real_pthread_mutex_trylock(pthread_mutex_t* mutex);
int __real_pthread_mutex_unlock(pthread_mutex_t* mutex);
int __wrap_pthread_mutex_init(pthread_mutex_t* mutex, const pthread_mutexattr_t* attributes);
int __wrap_pthread_mutex_destroy(pthread_mutex_t* mutex);
int __wrap_pthread_mutex_lock(pthread_mutex_t* mutex);
int __wrap_pthread_mutex_trylock(pthread_mutex_t* mutex);
int __wrap_pthread_mutex_unlock(pthread_mutex_t* mutex);

int __wrap_pthread_mutex_init(pthread_mutex_t* mutex, const pthread_mutexattr_t* attributes) {
    TheMutexes().alive.push_back(mutex);
    return Record(mutex, attributes == nullptr ? "init" : "init with attributes", 0,
                  __real_pthread_mutex_init(mutex, attributes));
}

int __wrap_pthread_mutex_destroy(pthread_mutex_t* mutex) {
    const int result = Record(mutex, "destroy", 0, __real_pthread_mutex_destroy(mutex));
    std::erase(TheMutexes().alive, mutex);
    return result;
}

int __wrap_pthread_mutex_lock(pthread_mutex_t* mutex) {
    return Record(mutex, "lock", 1, __real_pthread_mutex_lock(mutex));
}

int __wrap_pthread_mutex_trylock(pthread_mutex_t* mutex) {
    return Record(mutex, "trylock", 1, __real_pthread_mutex_trylock(mutex));
}

int __wrap_pthread_mutex_unlock(pthread_mutex_t* mutex) {
    return Record(mutex, "unlock", -1, __real_pthread_mutex_unlock(mutex));
}
}
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
