// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <vector>

#include "common/Output.h"
#include "link/GioHandles.h"

namespace applist::sim {

/// Runs the default main context until done returns true, but at most for patience. done runs at
/// least once, and again after every iteration. Returns false iff patience ended first.
bool RunUntil(const std::function<bool()>& done,
              std::optional<std::chrono::milliseconds> patience = std::nullopt);

/// The run of a command: it ends with an exit code, and signals of the system can end it.
class MainLoop {
public:
    /// Runs action on the main context whenever the process receives this signal.
    void OnSignal(int number, const std::function<void()>& action);
    /// Runs the default main context until End(). Returns at once if End() was called before.
    ExitCode Run() {
        RunUntil([this] { return m_exitCode.has_value(); });
        return *m_exitCode;
    }
    /// Ends the run. The first code wins.
    void End(ExitCode code) { m_exitCode = m_exitCode.value_or(code); }
    /// Absent until End().
    const std::optional<ExitCode>& exitCode() const { return m_exitCode; }

private:
    std::vector<Registration> m_signals;
    std::optional<ExitCode> m_exitCode;
};

}  // namespace applist::sim
