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

/// A program at a terminal of its own, 80 columns wide, where a test types. Killed and reaped at
/// the end.
class TerminalProcess {
public:
    explicit TerminalProcess(const std::vector<std::string>& argv,
                             const ChildProcess::Environment& changes = {});
    ~TerminalProcess();
    TerminalProcess(const TerminalProcess&) = delete;
    TerminalProcess& operator=(const TerminalProcess&) = delete;
    TerminalProcess(TerminalProcess&&) = delete;
    TerminalProcess& operator=(TerminalProcess&&) = delete;

    /// As a person types it: "\r" is Enter, "\x03" Ctrl-C.
    void Type(const std::string& keys) const;
    /// Takes the terminal away, as the end of its window does.
    void HangUp();
    /// All that came on the terminal so far, with its control sequences.
    const std::string& Output() const { return m_output; }
    /// Reads until text stands behind what was found before; true iff it does in time.
    bool WaitFor(const std::string& text);
    /// Reads to the end of the program; its exit status, 128 + n after signal n, nothing if it
    /// still runs when patience ends.
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
