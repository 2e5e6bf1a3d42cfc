// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <glib.h>
#include <optional>
#include <vector>

#include "common/Output.h"
#include "link/GioHandles.h"

namespace applist::sim {

/// Runs the default main context until End(), SIGINT or SIGTERM.
class MainLoop {
public:
    /// Returns the exit code for a signal.
    using Interrupted = std::function<ExitCode()>;

    explicit MainLoop(Interrupted interrupted);
    ~MainLoop();
    MainLoop(const MainLoop&) = delete;
    MainLoop& operator=(const MainLoop&) = delete;
    MainLoop(MainLoop&&) = delete;
    MainLoop& operator=(MainLoop&&) = delete;

    /// Returns at once if End() was called before. Call only once.
    ExitCode Run();
    /// Ends Run(). The first code wins.
    void End(ExitCode code);

private:
    static int cb_Interrupted(void* loop) noexcept;

    GMainLoop* m_loop;
    Interrupted m_interrupted;
    std::vector<Registration> m_signals;
    std::optional<ExitCode> m_exitCode;
};

}  // namespace applist::sim
