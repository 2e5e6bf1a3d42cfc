// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "support/ChildProcess.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <poll.h>
#include <unistd.h>

#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>

namespace applist::test {
namespace {

using Clock = std::chrono::steady_clock;

int MillisecondsUntil(Clock::time_point deadline) {
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
    return static_cast<int>(std::max<int64_t>(0, left.count()));
}

void Apply(const ChildProcess::Environment& changes) {
    for (const auto& [name, value] : changes) {
        if (value) {
            setenv(name.c_str(), value->c_str(), 1);
        } else {
            unsetenv(name.c_str());
        }
    }
}

}  // namespace

void BecomeProgram(const std::vector<std::string>& argv, const ChildProcess::Environment& changes) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    Apply(changes);
    std::vector<char*> arguments;
    arguments.reserve(argv.size() + 1);
    for (const std::string& argument : argv) {
        arguments.push_back(const_cast<char*>(argument.c_str()));
    }
    arguments.push_back(nullptr);
    execvp(arguments[0], arguments.data());
    dprintf(STDERR_FILENO, "cannot start %s: %s\n", arguments[0], std::strerror(errno));
    _exit(127);
}

ChildProcess::ChildProcess(const std::vector<std::string>& argv, const Environment& changes) {
    int output[2];
    int errors[2];
    if (pipe2(output, O_CLOEXEC) != 0 || pipe2(errors, O_CLOEXEC) != 0) {
        std::abort();
    }
    m_pid = fork();
    if (m_pid == 0) {
        dup2(open("/dev/null", O_RDONLY | O_CLOEXEC), STDIN_FILENO);
        dup2(output[1], STDOUT_FILENO);
        dup2(errors[1], STDERR_FILENO);
        BecomeProgram(argv, changes);
    }
    close(output[1]);
    close(errors[1]);
    m_streams[0].fd = output[0];
    m_streams[1].fd = errors[0];
    for (const Stream& stream : m_streams) {
        fcntl(stream.fd, F_SETFL, O_NONBLOCK);
    }
    // By number, because this C library declares the function without C linkage. It fails under
    // valgrind 3.19; ReadSome() then asks for the end of the process again and again.
    m_pidFd = static_cast<int>(syscall(SYS_pidfd_open, m_pid, 0));
}

ChildProcess::~ChildProcess() {
    if (!m_status) {
        kill(m_pid, SIGKILL);
        waitpid(m_pid, nullptr, 0);
    }
    close(m_pidFd);
    for (const Stream& stream : m_streams) {
        if (stream.fd >= 0) {
            close(stream.fd);
        }
    }
}

bool ChildProcess::WaitForText(const std::string& text, std::chrono::milliseconds patience) {
    return WaitUntil(
        [&] {
            return Output().find(text) != std::string::npos ||
                   Errors().find(text) != std::string::npos;
        },
        patience);
}

bool ChildProcess::WaitUntil(const std::function<bool()>& condition,
                             std::chrono::milliseconds patience) {
    const auto deadline = Clock::now() + patience;
    while (!condition()) {
        if (m_status || !ReadSome(deadline)) {
            return condition();
        }
    }
    return true;
}

std::optional<int> ChildProcess::WaitForExit(std::chrono::milliseconds patience) {
    WaitUntil([] { return false; }, patience);
    return m_status;
}

void ChildProcess::Signal(int number) const {
    if (!m_status) {
        kill(m_pid, number);
    }
}

long ChildProcess::Sleeps(const std::string& name) const {
    long sleeps = 0;
    std::error_code gone;
    for (const auto& thread :
         std::filesystem::directory_iterator("/proc/" + std::to_string(m_pid) + "/task", gone)) {
        std::ifstream status(thread.path() / "status");
        std::string word;
        if (!(status >> word >> word) || (!name.empty() && word != name)) {
            continue;
        }
        while (status >> word) {
            long count = 0;
            if (word.ends_with("voluntary_ctxt_switches:") && status >> count) {
                sleeps += count;
            }
        }
    }
    return sleeps;
}

bool ChildProcess::WaitForRest(std::chrono::seconds length) {
    const auto deadline = Clock::now() + PATIENCE;
    bool rests = false;
    while (!rests && Clock::now() < deadline) {
        const long before = Sleeps();
        if (WaitForExit(length)) {
            return false;
        }
        rests = Sleeps() == before;
    }
    return rests;
}

bool ChildProcess::ReadSome(Clock::time_point deadline) {
    std::array<pollfd, 3> watched{
        {{m_streams[0].fd, POLLIN, 0}, {m_streams[1].fd, POLLIN, 0}, {m_pidFd, POLLIN, 0}}};
    const int left = MillisecondsUntil(deadline);
    const bool seesEnd = m_pidFd >= 0;
    const int ready = poll(watched.data(), watched.size(), seesEnd ? left : std::min(left, 10));
    if (ready <= 0 && (seesEnd || left == 0)) {
        return false;
    }
    Drain(m_streams[0]);
    Drain(m_streams[1]);
    if (watched[2].revents != 0 || !seesEnd) {
        Reap();
    }
    return true;
}

void ChildProcess::Drain(Stream& stream) {
    std::array<char, 4096> piece{};
    ssize_t count = 0;
    while (stream.fd >= 0 && (count = read(stream.fd, piece.data(), piece.size())) > 0) {
        stream.text.append(piece.data(), static_cast<size_t>(count));
    }
    if (stream.fd >= 0 && count == 0) {
        close(stream.fd);
        stream.fd = -1;
    }
}

void ChildProcess::Reap() {
    int status = 0;
    if (waitpid(m_pid, &status, WNOHANG) == 0) {
        return;
    }
    m_status = WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
    Drain(m_streams[0]);
    Drain(m_streams[1]);
}

std::string BuiltProgram(const std::string& name) {
    const char* folder = std::getenv("APPLIST_BIN");
    return (folder != nullptr ? std::string(folder) : ".") + "/" + name;
}

std::string TestProgram(const std::string& name) {
    return std::filesystem::read_symlink("/proc/self/exe").parent_path() / name;
}

std::vector<std::string> ClockAtSpeed(const std::string& factor, const std::string& library) {
    // The library without its command of the same name, which does not start a program when a
    // killed process with the same id has left a semaphore behind.
    const std::string clock = "/usr/$LIB/faketime/libfaketime.so.1";
    return {"env", "LD_PRELOAD=" + (library.empty() ? clock : library + ":" + clock),
            "FAKETIME=+0 x" + factor};
}

}  // namespace applist::test
