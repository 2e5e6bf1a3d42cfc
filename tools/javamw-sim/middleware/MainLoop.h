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

/// One run of the default main context, to an end that somebody or SIGINT or SIGTERM gives it.
class MainLoop {
public:
    /// Says what the signals mean.
    using Interrupted = std::function<ExitCode()>;

    explicit MainLoop(Interrupted interrupted);
    ~MainLoop();
    MainLoop(const MainLoop&) = delete;
    MainLoop& operator=(const MainLoop&) = delete;
    MainLoop(MainLoop&&) = delete;
    MainLoop& operator=(MainLoop&&) = delete;

    /// Returns at once if the end came already. Once only.
    ExitCode Run();
    /// Ends Run(); the first code given counts.
    void End(ExitCode code);

private:
    static int cb_Interrupted(void* loop) noexcept;

    GMainLoop* m_loop;
    Interrupted m_interrupted;
    std::vector<Registration> m_signals;
    std::optional<ExitCode> m_exitCode;
};

}  // namespace applist::sim
