// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Moves the clocks of the program into which it is preloaded. The file named by APPLIST_CLOCK_STEP
// holds two numbers of seconds, each an int64_t, which are read on each call. The first is added to
// the wall clock only, as when the time is really set, the second to the monotonic clock.
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

#include <sys/mman.h>
#include <sys/time.h>

namespace {

struct Steps {
    std::atomic<int64_t> wall;
    std::atomic<int64_t> monotonic;
};

const Steps* OpenSteps() {
    static const Steps none{0, 0};
    const char* path = std::getenv("APPLIST_CLOCK_STEP");
    const int file = path != nullptr ? open(path, O_RDONLY | O_CLOEXEC) : -1;
    void* memory =
        file >= 0 ? mmap(nullptr, sizeof(Steps), PROT_READ, MAP_SHARED, file, 0) : MAP_FAILED;
    if (file >= 0) {
        close(file);
    }
    return memory != MAP_FAILED ? static_cast<const Steps*>(memory) : &none;
}

const Steps& TheSteps() {
    static const Steps* const steps = OpenSteps();
    return *steps;
}

template <typename Function>
Function* Real(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

int64_t StepOf(clockid_t clock) {
    switch (clock) {
        case CLOCK_REALTIME:
        case CLOCK_REALTIME_COARSE:
            return TheSteps().wall;
        case CLOCK_MONOTONIC:
        case CLOCK_MONOTONIC_COARSE:
            return TheSteps().monotonic;
        default:
            return 0;
    }
}

}  // namespace

extern "C" {

__attribute__((visibility("default"))) int clock_gettime(clockid_t clock, timespec* time) noexcept {
    static auto* const real = Real<int(clockid_t, timespec*)>("clock_gettime");
    const int result = real(clock, time);
    if (result == 0) {
        time->tv_sec += StepOf(clock);
    }
    return result;
}

__attribute__((visibility("default"))) int gettimeofday(timeval* time, void* zone) noexcept {
    static auto* const real = Real<int(timeval*, void*)>("gettimeofday");
    const int result = real(time, zone);
    if (result == 0) {
        time->tv_sec += TheSteps().wall;
    }
    return result;
}

__attribute__((visibility("default"))) time_t time(time_t* result) noexcept {
    static auto* const real = Real<time_t(time_t*)>("time");
    const time_t now = real(nullptr) + TheSteps().wall;
    if (result != nullptr) {
        *result = now;
    }
    return now;
}
}
