// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

namespace applist::test {

/// How long a test waits for something that is expected to happen. Long, since a loaded machine is
/// no failure; a wait that succeeds never takes it.
constexpr std::chrono::seconds PATIENCE{30};

/// A second process with its output read as it comes. Killed and reaped at the end.
class ChildProcess {
public:
    /// Environment changes by name; no value removes the variable.
    using Environment = std::map<std::string, std::optional<std::string>>;

    /// Starts argv[0], looked up in PATH, with this process' environment under those changes.
    /// Standard input is empty. A program that cannot be started ends with 127.
    explicit ChildProcess(const std::vector<std::string>& argv, const Environment& changes = {});
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ChildProcess(ChildProcess&&) = delete;
    ChildProcess& operator=(ChildProcess&&) = delete;

    pid_t pid() const { return m_pid; }
    /// All that came on standard output, or on standard error, so far.
    const std::string& Output() const { return m_streams[0].text; }
    const std::string& Errors() const { return m_streams[1].text; }

    /// Reads until text stands on either stream; true iff it does in time.
    bool WaitForText(const std::string& text, std::chrono::milliseconds patience = PATIENCE);
    /// Reads until condition, asked after each piece of output, holds; true iff it does in time.
    bool WaitUntil(const std::function<bool()>& condition,
                   std::chrono::milliseconds patience = PATIENCE);
    /// Reads to the end of the process; its exit status, 128 + n after signal n, nothing if it
    /// still runs when patience ends.
    std::optional<int> WaitForExit(std::chrono::milliseconds patience = PATIENCE);
    void Signal(int number) const;

private:
    struct Stream {
        int fd = -1;
        std::string text;
    };
    /// Waits for output or the end; false when the deadline passed without either.
    bool ReadSome(std::chrono::steady_clock::time_point deadline);
    void Drain(Stream& stream);
    void Reap();

    pid_t m_pid = -1;
    int m_pidFd = -1;
    Stream m_streams[2];
    std::optional<int> m_status;
};

/// Turns a process between fork and exec into the program argv[0], which ends with its parent. One
/// that cannot be started ends with 127.
[[noreturn]] void BecomeProgram(const std::vector<std::string>& argv,
                                const ChildProcess::Environment& changes);

/// The path of a program that the build made, for tests that start it.
std::string BuiltProgram(const std::string& name);
/// The path of a program that tests alone start; it stands beside the running test.
std::string TestProgram(const std::string& name);

}  // namespace applist::test
