// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <vector>

#include <glib-unix.h>

#include "common/Output.h"
#include "link/GioHandles.h"

namespace applist::sim {

/// Runs the default main context until done returns true, but at most for patience. done runs at
/// least once, and again after every iteration. Returns false iff patience ended first.
inline bool RunUntil(const std::function<bool()>& done,
                     std::optional<std::chrono::milliseconds> patience = std::nullopt) {
    bool tooLong = false;
    const Registration clock =
        patience ? RunAfter(*patience, [&tooLong] { tooLong = true; }) : Registration();
    bool held = done();
    while (!held && !tooLong) {
        g_main_context_iteration(nullptr, TRUE);
        held = done();
    }
    return held;
}

/// Runs the main context for a command until End(), and handles signals to the process. Main thread
/// only.
class MainLoop {
public:
    /// Runs action on the main context whenever the process receives this signal.
    void OnSignal(int number, const std::function<void()>& action) {
        m_signals.push_back(RunOn(g_unix_signal_source_new(number), [action] {
            action();
            return true;
        }));
    }
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
