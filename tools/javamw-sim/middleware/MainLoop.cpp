// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "middleware/MainLoop.h"

#include <csignal>
#include <cstdio>
#include <sstream>

#include <glib-unix.h>

#include "shared/Output.h"

namespace applist::sim {

void Complain(const std::string& message) {
    std::istringstream lines(message);
    std::string text;
    for (std::string line; std::getline(lines, line);) {
        text += "javamw-sim: " + line + '\n';
    }
    // A failed write to stderr cannot be reported anywhere.
    static_cast<void>(std::fwrite(text.data(), 1, text.size(), stderr));
}

ExitCode Fail(const std::string& message, ExitCode code) {
    Complain(message);
    return code;
}

bool RunUntil(const std::function<bool()>& done,
              std::optional<std::chrono::milliseconds> patience) {
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

void MainLoop::OnSignal(int number, const std::function<void()>& action) {
    m_signals.push_back(RunOn(g_unix_signal_source_new(number), [action] {
        action();
        return true;
    }));
}

void MainLoop::OnInterrupt(const std::function<void()>& action) {
    OnSignal(SIGINT, action);
    OnSignal(SIGTERM, action);
}

ExitCode MainLoop::Run() {
    RunUntil([this] { return m_exitCode.has_value(); });
    return *m_exitCode;
}

void MainLoop::Print(const std::string& line) {
    if (!tools::WriteLine(line)) {
        End(ExitCode::CallFailed);
    }
}

}  // namespace applist::sim
