// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

#include "support/ChildProcess.h"

namespace applist::test {

/// A program on a pseudo-terminal, 80 columns wide, on which the test types. Killed and reaped by
/// the destructor.
class TerminalProcess {
public:
    explicit TerminalProcess(const std::vector<std::string>& argv,
                             const ChildProcess::Environment& changes = {});
    ~TerminalProcess();
    TerminalProcess(const TerminalProcess&) = delete;
    TerminalProcess& operator=(const TerminalProcess&) = delete;

    /// As a person types it: "\r" is Enter, "\x03" Ctrl-C.
    void Type(const std::string& keys) const;
    /// Closes the terminal, as closing its window does.
    void HangUp();
    /// All output on the terminal so far, including control sequences.
    const std::string& Output() const { return m_output; }
    /// Reads until text appears after the text found last; true iff it does in time.
    bool WaitFor(const std::string& text);
    /// Reads until the program ends. Returns its exit status, 128 + n after signal n, or nothing if
    /// it still runs when patience ends.
    std::optional<int> WaitForExit();

private:
    bool ReadSome(std::chrono::steady_clock::time_point deadline);

    pid_t m_pid = -1;
    int m_terminal = -1;
    std::string m_output;
    size_t m_found = 0;
    bool m_ended = false;
};

}  // namespace applist::test
