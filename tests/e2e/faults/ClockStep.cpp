// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Sets the wall clock of the program into which it is preloaded. The file named by
// APPLIST_CLOCK_STEP holds an int64_t, the seconds to add, which are read on each call.
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

const std::atomic<int64_t>* OpenStep() {
    static const std::atomic<int64_t> none{0};
    const char* path = std::getenv("APPLIST_CLOCK_STEP");
    const int file = path != nullptr ? open(path, O_RDONLY | O_CLOEXEC) : -1;
    void* memory =
        file >= 0 ? mmap(nullptr, sizeof none, PROT_READ, MAP_SHARED, file, 0) : MAP_FAILED;
    if (file >= 0) {
        close(file);
    }
    return memory != MAP_FAILED ? static_cast<const std::atomic<int64_t>*>(memory) : &none;
}

int64_t Step() {
    static const std::atomic<int64_t>* const step = OpenStep();
    return *step;
}

template <typename Function>
Function* Real(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

extern "C" {

__attribute__((visibility("default"))) int clock_gettime(clockid_t clock, timespec* time) noexcept {
    static auto* const real = Real<int(clockid_t, timespec*)>("clock_gettime");
    const int result = real(clock, time);
    if (result == 0 && (clock == CLOCK_REALTIME || clock == CLOCK_REALTIME_COARSE)) {
        time->tv_sec += Step();
    }
    return result;
}

__attribute__((visibility("default"))) int gettimeofday(timeval* time, void* zone) noexcept {
    static auto* const real = Real<int(timeval*, void*)>("gettimeofday");
    const int result = real(time, zone);
    if (result == 0) {
        time->tv_sec += Step();
    }
    return result;
}

__attribute__((visibility("default"))) time_t time(time_t* result) noexcept {
    static auto* const real = Real<time_t(time_t*)>("time");
    const time_t now = real(nullptr) + Step();
    if (result != nullptr) {
        *result = now;
    }
    return now;
}
}
