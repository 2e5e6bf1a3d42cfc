// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "support/TerminalProcess.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <poll.h>
#include <pty.h>
#include <unistd.h>
#include <utility>

#include <sys/wait.h>

namespace applist::test {
namespace {

using Clock = std::chrono::steady_clock;

}  // namespace

TerminalProcess::TerminalProcess(const std::vector<std::string>& argv,
                                 const ChildProcess::Environment& changes) {
    winsize size{};
    size.ws_row = 24;
    size.ws_col = 80;
    m_pid = forkpty(&m_terminal, nullptr, nullptr, &size);
    if (m_pid == 0) {
        BecomeProgram(argv, changes);
    }
}

TerminalProcess::~TerminalProcess() {
    HangUp();
    if (m_pid > 0) {
        kill(m_pid, SIGKILL);
        waitpid(m_pid, nullptr, 0);
    }
}

void TerminalProcess::Type(const std::string& keys) const {
    for (size_t done = 0; done < keys.size();) {
        const ssize_t size = write(m_terminal, keys.data() + done, keys.size() - done);
        if (size < 0 && errno != EINTR) {
            return;
        }
        done += static_cast<size_t>(std::max<ssize_t>(0, size));
    }
}

void TerminalProcess::HangUp() {
    if (m_terminal >= 0) {
        close(std::exchange(m_terminal, -1));
    }
}

// The read fails once the last process has closed the terminal.
bool TerminalProcess::ReadSome(Clock::time_point deadline) {
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
    pollfd waited{m_terminal, POLLIN, 0};
    if (left.count() <= 0 || poll(&waited, 1, static_cast<int>(left.count())) == 0) {
        return false;
    }
    std::array<char, 4096> buffer{};
    const ssize_t size = read(m_terminal, buffer.data(), buffer.size());
    m_ended = size <= 0;
    m_output.append(buffer.data(), static_cast<size_t>(std::max<ssize_t>(0, size)));
    return true;
}

bool TerminalProcess::WaitFor(const std::string& text) {
    const auto deadline = Clock::now() + PATIENCE;
    while (true) {
        const size_t place = m_output.find(text, m_found);
        if (place != std::string::npos) {
            m_found = place + text.size();
            return true;
        }
        if (m_ended || !ReadSome(deadline)) {
            return false;
        }
    }
}

std::optional<int> TerminalProcess::WaitForExit() {
    const auto deadline = Clock::now() + PATIENCE;
    while (m_terminal >= 0 && !m_ended) {
        if (!ReadSome(deadline)) {
            return std::nullopt;
        }
    }
    int status = 0;
    if (waitpid(std::exchange(m_pid, -1), &status, 0) < 0) {
        return std::nullopt;
    }
    return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

}  // namespace applist::test
