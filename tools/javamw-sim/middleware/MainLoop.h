// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "GlibHandles.h"

namespace applist::sim {

/// Exit status of the program; --help lists them.
enum class ExitCode : int {
    Success = 0,
    CallFailed = 1,     ///< Or the application ended first, or writing failed.
    WrongUsage = 2,     ///< Or an invalid input file.
    NoBus = 3,          ///< Not reachable, denied, or lost later.
    NoApplication = 4,  ///< No application appeared in time.
};

/// Printed after the error when the policy of the bus denies the names of the middleware.
constexpr const char* DENIED_HINT =
    "run as the user whom the policy of the bus allows to be the middleware, or choose another bus "
    "with --address";

/// Writes message to standard error, with "javamw-sim: " before each line; nothing if it is empty.
void Complain(const std::string& message);
/// Writes message as Complain() does and returns code.
ExitCode Fail(const std::string& message, ExitCode code);

/// Runs the default main context until done returns true, but at most for patience. done runs at
/// least once, and again after every iteration. Returns false iff patience ended first.
bool RunUntil(const std::function<bool()>& done,
              std::optional<std::chrono::milliseconds> patience = std::nullopt);

/// Runs the main context for a command until End(), and handles signals to the process. Main thread
/// only.
class MainLoop {
public:
    /// Runs action on the main context whenever the process receives this signal.
    void OnSignal(int number, const std::function<void()>& action);
    /// Runs action for SIGINT and SIGTERM.
    void OnInterrupt(const std::function<void()>& action);
    /// Runs the default main context until End(). Returns at once if End() was called before.
    ExitCode Run();
    /// Ends the run. The first code wins.
    void End(ExitCode code) { m_exitCode = m_exitCode.value_or(code); }
    /// Prints a line. Ends the run if standard output cannot be written, because a reader such as
    /// head has closed the pipe.
    void Print(const std::string& line);
    /// Absent until End().
    const std::optional<ExitCode>& exitCode() const { return m_exitCode; }

private:
    std::vector<Registration> m_signals;
    std::optional<ExitCode> m_exitCode;
};

}  // namespace applist::sim
