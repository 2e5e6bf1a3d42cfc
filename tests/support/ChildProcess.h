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

/// The time limit of a test's waits. Long, because a loaded machine must not fail a test; a wait
/// that succeeds returns at once.
constexpr std::chrono::seconds PATIENCE{30};

/// A child process whose output is read as it arrives. Killed and reaped by the destructor.
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

    pid_t pid() const { return m_pid; }
    /// Everything received so far on standard output and standard error.
    const std::string& Output() const { return m_streams[0].text; }
    const std::string& Errors() const { return m_streams[1].text; }

    /// Reads until either stream contains text; true iff it does in time.
    bool WaitForText(const std::string& text, std::chrono::milliseconds patience = PATIENCE);
    /// Reads until condition holds, checked after each piece of output; true iff it does in time.
    bool WaitUntil(const std::function<bool()>& condition,
                   std::chrono::milliseconds patience = PATIENCE);
    /// Reads until the process ends. Returns its exit status, 128 + n after signal n, or nothing if
    /// it still runs when patience ends.
    std::optional<int> WaitForExit(std::chrono::milliseconds patience = PATIENCE);
    void Signal(int number) const;
    /// How many times its threads of this name, or all of them, have gone to sleep or made way for
    /// others. Excludes threads that have ended.
    long Sleeps(const std::string& name = "") const;
    /// Waits until no thread has woken up for this long; true iff that happens in time.
    bool WaitForRest(std::chrono::seconds length);

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

/// Executes argv[0] in a forked child; the program ends with its parent. Exits with 127 if it
/// cannot be started.
[[noreturn]] void BecomeProgram(const std::vector<std::string>& argv,
                                const ChildProcess::Environment& changes);

/// The path of a program from the build, for tests that start it.
std::string BuiltProgram(const std::string& name);
/// The path of a helper program for tests, in the folder of the running test.
std::string TestProgram(const std::string& name);

/// What precedes a program on the command line so that its clocks run faster by factor. The process
/// that runs the command becomes the program. If library is given, it is preloaded, too, and sees
/// the times of the faster clocks.
std::vector<std::string> ClockAtSpeed(const std::string& factor, const std::string& library = "");

}  // namespace applist::test
