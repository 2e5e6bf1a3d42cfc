// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "middleware/MainLoop.h"

#include <csignal>
#include <utility>

#include <glib-unix.h>

namespace applist::sim {

MainLoop::MainLoop(Interrupted interrupted)
    : m_loop(g_main_loop_new(nullptr, FALSE)), m_interrupted(std::move(interrupted)) {
    for (const int number : {SIGINT, SIGTERM}) {
        m_signals.push_back(OwnSource(g_unix_signal_add(number, &cb_Interrupted, this)));
    }
}

MainLoop::~MainLoop() {
    m_signals.clear();
    g_main_loop_unref(m_loop);
}

ExitCode MainLoop::Run() {
    if (!m_exitCode) {
        g_main_loop_run(m_loop);
    }
    return m_exitCode.value_or(ExitCode::Success);
}

void MainLoop::End(ExitCode code) {
    if (!m_exitCode) {
        m_exitCode = code;
    }
    g_main_loop_quit(m_loop);
}

int MainLoop::cb_Interrupted(void* loop) noexcept {
    auto* self = static_cast<MainLoop*>(loop);
    self->End(self->m_interrupted());
    return G_SOURCE_CONTINUE;
}

}  // namespace applist::sim
