// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Stops the writer into which it is preloaded at a chosen step of replacing a file:
//   APPLIST_TRAP=write|fsync|rename|renamed   after half of the data; after all data; before the
//                                             new file replaces the old one; right after that
//   APPLIST_TRAP_DO=kill|wait                 kills the writer, or prints "trapped" and waits for
//                                             SIGUSR1
// Every process with the trap also reports when it has to wait for a lock.
#include <array>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <string_view>
#include <unistd.h>

#include <sys/file.h>
#include <sys/stat.h>

namespace {

template <typename Function>
Function* Real(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

ssize_t RealWrite(int fd, const void* data, size_t size) {
    static auto* const real = Real<ssize_t(int, const void*, size_t)>("write");
    return real(fd, data, size);
}

void Say(std::string_view text) {
    static_cast<void>(RealWrite(STDERR_FILENO, text.data(), text.size()));
}

std::string_view Variable(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

sigset_t TheGoAhead() {
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGUSR1);
    return set;
}

void Reach(std::string_view step) {
    if (Variable("APPLIST_TRAP") != step) {
        return;
    }
    if (Variable("APPLIST_TRAP_DO") == "kill") {
        raise(SIGKILL);
    }
    Say("trapped\n");
    const sigset_t set = TheGoAhead();
    int number = 0;
    sigwait(&set, &number);
}

/// Before main(), so that an early SIGUSR1 stays pending.
__attribute__((constructor)) void HoldTheGoAhead() {
    const sigset_t set = TheGoAhead();
    sigprocmask(SIG_BLOCK, &set, nullptr);
}

bool IsFile(int fd) {
    struct stat status {};
    return fstat(fd, &status) == 0 && S_ISREG(status.st_mode);
}

}  // namespace

extern "C" {

__attribute__((visibility("default"))) ssize_t write(int fd, const void* data, size_t size) {
    if (!IsFile(fd) || Variable("APPLIST_TRAP") != "write") {
        return RealWrite(fd, data, size);
    }
    const ssize_t half = RealWrite(fd, data, size / 2);
    Reach("write");
    return half;
}

__attribute__((visibility("default"))) int fsync(int fd) {
    Reach("fsync");
    return Real<int(int)>("fsync")(fd);
}

__attribute__((visibility("default"))) int rename(const char* from, const char* to) noexcept {
    Reach("rename");
    const int result = Real<int(const char*, const char*)>("rename")(from, to);
    Reach("renamed");
    return result;
}

__attribute__((visibility("default"))) int flock(int fd, int operation) noexcept {
    static auto* const real = Real<int(int, int)>("flock");
    const int result = real(fd, operation | LOCK_NB);
    if (result == 0 || (operation & LOCK_NB) != 0) {
        return result;
    }
    Say("waiting for the lock\n");
    return real(fd, operation);
}
}
