// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Code that should not run in the program into which it is preloaded. A thread that gets the signal
// SIGRTMAX tries what an intruder would, and prints a line "NAME ERROR-CODE" for each attempt.
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/un.h>

namespace {

void Report(const char* attempt, long result) {
    char line[64];
    const int length =
        std::snprintf(line, sizeof line, "intruder: %s %d\n", attempt, result < 0 ? errno : 0);
    static_cast<void>(write(STDERR_FILENO, line, static_cast<size_t>(length)));
}

long Connect(const char* path) {
    sockaddr_un address{AF_UNIX, {}};
    std::strncpy(address.sun_path, path, sizeof address.sun_path - 1);
    const int file = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    return file < 0 ? file
                    : connect(file, reinterpret_cast<const sockaddr*>(&address), sizeof address);
}

void TryEverything(int) {
    Report("read", open(std::getenv("INTRUDER_FILE"), O_RDONLY | O_CLOEXEC));
    Report("write", open(std::getenv("INTRUDER_FILE"), O_WRONLY | O_CLOEXEC));
    Report("network", socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    Report("connect", Connect(std::getenv("INTRUDER_SOCKET")));
    Report("execute", execl("/bin/true", "true", nullptr));
}

__attribute__((constructor)) void Enter() {
    struct sigaction action {};
    action.sa_handler = TryEverything;
    action.sa_flags = SA_RESTART;
    sigaction(SIGRTMAX, &action, nullptr);
}

}  // namespace
