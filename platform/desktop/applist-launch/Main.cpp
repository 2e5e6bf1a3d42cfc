// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// applist-launch: starts the application in a prepared process, forwards signals to it and ends
// with its exit status. Without a prepared process it executes the program.
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <string>
#include <string_view>

#include <sys/time.h>

#include "launch/PreparedLaunch.h"

namespace {

using applist::desktop::PREPARED_DESCRIPTORS;

constexpr const char* APPLICATION_ID = "org.vantu.applist";
// The program beside this one.
constexpr std::string_view PROGRAM = "applist";

constexpr int CANNOT_START = 127;
// As the application's status for an unexpected error.
constexpr int ENDED_UNEXPECTEDLY = 251;
// A prepared process that takes longer is stopped or overloaded.
constexpr timeval ANSWER_TIMEOUT{0, 500'000};

// For the signal handler.
int g_connection = -1;

void Forward(int signal) {
    // The signal may have interrupted code that is about to read errno.
    const int error = errno;
    const auto number = static_cast<unsigned char>(signal);
    send(g_connection, &number, 1, MSG_NOSIGNAL);
    errno = error;
}

void ForwardSignals() {
    struct sigaction action {};
    action.sa_handler = Forward;
    // So that the signal does not end the wait for the exit status.
    action.sa_flags = SA_RESTART;
    for (const int signal : {SIGTERM, SIGINT, SIGHUP, SIGQUIT}) {
        sigaction(signal, &action, nullptr);
    }
}

std::string ProgramPath() {
    std::array<char, 4096> path{};
    const ssize_t length = readlink("/proc/self/exe", path.data(), path.size());
    const std::string_view self(path.data(), length > 0 ? static_cast<size_t>(length) : 0);
    return std::string(self.substr(0, self.find_last_of('/') + 1)).append(PROGRAM);
}

// The arguments and the environment, as PreparedLaunch.h describes them.
std::string RequestOf(char** argv) {
    uint32_t count = 0;
    std::string texts;
    for (; argv[count] != nullptr; ++count) {
        texts.append(argv[count], std::strlen(argv[count]) + 1);
    }
    for (char** variable = environ; *variable != nullptr; ++variable) {
        texts.append(*variable, std::strlen(*variable) + 1);
    }
    std::string request(sizeof count, '\0');
    std::memcpy(request.data(), &count, sizeof count);
    return request + texts;
}

bool Send(int connection, std::string request) {
    const std::array<int, PREPARED_DESCRIPTORS> descriptors{
        STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO, open(".", O_PATH | O_CLOEXEC)};
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof descriptors)> control{};
    iovec text{request.data(), request.size()};
    msghdr message{};
    message.msg_iov = &text;
    message.msg_iovlen = 1;
    message.msg_control = control.data();
    message.msg_controllen = control.size();
    cmsghdr* header = CMSG_FIRSTHDR(&message);
    header->cmsg_level = SOL_SOCKET;
    header->cmsg_type = SCM_RIGHTS;
    header->cmsg_len = CMSG_LEN(sizeof descriptors);
    std::memcpy(CMSG_DATA(header), descriptors.data(), sizeof descriptors);
    const bool sent = request.size() <= applist::desktop::PREPARED_REQUEST_BYTES &&
                      sendmsg(connection, &message, MSG_NOSIGNAL) >= 0;
    close(descriptors.back());
    return sent;
}

// Returns the connection to the process that is now the application, or -1.
int TakePrepared(char** argv) {
    const auto address = applist::desktop::PreparedAddress(APPLICATION_ID);
    const int connection = address ? socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0) : -1;
    if (connection < 0) {
        return -1;
    }
    setsockopt(connection, SOL_SOCKET, SO_SNDTIMEO, &ANSWER_TIMEOUT, sizeof ANSWER_TIMEOUT);
    setsockopt(connection, SOL_SOCKET, SO_RCVTIMEO, &ANSWER_TIMEOUT, sizeof ANSWER_TIMEOUT);
    char answer = 0;
    if (connect(connection, reinterpret_cast<const sockaddr*>(&*address), sizeof *address) == 0 &&
        applist::desktop::PeerIsSameUser(connection) && Send(connection, RequestOf(argv)) &&
        recv(connection, &answer, 1, 0) == 1) {
        return connection;
    }
    close(connection);
    return -1;
}

int AwaitStatus(int connection) {
    // The limit was for the answer; the application may run for any time.
    constexpr timeval FOREVER{0, 0};
    setsockopt(connection, SOL_SOCKET, SO_RCVTIMEO, &FOREVER, sizeof FOREVER);
    int status = 0;
    if (recv(connection, &status, sizeof status, 0) == sizeof status) {
        return status;
    }
    static_cast<void>(std::fputs("applist-launch: the application ended unexpectedly\n", stderr));
    return ENDED_UNEXPECTEDLY;
}

}  // namespace

int main(int /*argc*/, char** argv) {
    std::string program = ProgramPath();
    // The application derives its id from this name.
    argv[0] = program.data();
    // Blocked until the connection is known, so that no signal is lost or ends only this process.
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    sigprocmask(SIG_BLOCK, &all, &before);
    g_connection = TakePrepared(argv);
    if (g_connection >= 0) {
        ForwardSignals();
    }
    sigprocmask(SIG_SETMASK, &before, nullptr);
    if (g_connection >= 0) {
        return AwaitStatus(g_connection);
    }
    execv(program.c_str(), argv);
    static_cast<void>(std::fprintf(stderr, "applist-launch: cannot execute %s: %s\n",
                                   program.c_str(), std::strerror(errno)));
    return CANNOT_START;
}
