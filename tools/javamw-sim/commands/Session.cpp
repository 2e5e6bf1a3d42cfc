// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "commands/Session.h"

#include <csignal>
#include <utility>

#include <glib-unix.h>

#include "Output.h"

namespace applist::sim {

Session::Session(SessionOptions options)
    : m_options(std::move(options)),
      m_report(m_options.json ? JsonReport() : TextReport(OutputTakesColours())),
      m_loop(g_main_loop_new(nullptr, FALSE)) {}

Session::~Session() {
    m_signals.clear();
    m_clock.Release();
    m_client.reset();
    m_link.reset();
    g_main_loop_unref(m_loop);
}

ExitCode Session::Run() {
    auto connection = OpenBus(m_options.address);
    if (!connection) {
        Complain("cannot reach the bus: " + connection.error());
        return ExitCode::NoBus;
    }
    WatchSignalsAndClock();
    m_link = std::make_unique<BusLink>(std::move(*connection), *this);
    m_client = std::make_unique<ListClient>(*m_link);
    if (!m_exitCode) {
        g_main_loop_run(m_loop);
    }
    return m_exitCode.value_or(ExitCode::Success);
}

void Session::Print(const std::string& line) {
    if (!WriteLine(line)) {
        End(ExitCode::CallFailed);
    }
}

void Session::End(ExitCode code) {
    if (!m_exitCode) {
        m_exitCode = code;
    }
    g_main_loop_quit(m_loop);
}

void Session::Connected(const std::string& application) {
    m_clock.Release();
    OnConnected(application);
}

void Session::Disconnected(const std::string& application) {
    OnDisconnected(application);
}

void Session::Notified(const std::string& application, const Bytes& message) {
    if (const auto notification = DecodeNotification(message)) {
        OnNotified(application, *notification);
    } else {
        Complain("notification of " + std::to_string(message.size()) + " bytes from " +
                 application + " holds no message id");
    }
}

Bytes Session::Called(const std::string& application, const Bytes& message) {
    Complain("call of " + std::to_string(message.size()) + " bytes from " + application +
             " answered with nothing");
    return {};
}

void Session::LinkFailed(const std::string& error) {
    Complain(error);
}

void Session::BusLost() {
    Complain("the bus closed the connection");
    End(ExitCode::NoBus);
}

void Session::WatchSignalsAndClock() {
    for (const int number : {SIGINT, SIGTERM}) {
        m_signals.push_back(OwnSource(g_unix_signal_add(number, &cb_Interrupted, this)));
    }
    if (m_options.timeout) {
        m_clock = OwnSource(g_timeout_add_seconds(*m_options.timeout, &cb_Timeout, this));
    }
}

void Session::OnTimeout() {
    m_clock.Forget();
    Complain("no application within " + std::to_string(*m_options.timeout) + " s");
    End(ExitCode::NoApplication);
}

int Session::cb_Interrupted(void* session) noexcept {
    auto* self = static_cast<Session*>(session);
    self->End(self->OnInterrupted());
    return G_SOURCE_CONTINUE;
}

int Session::cb_Timeout(void* session) noexcept {
    static_cast<Session*>(session)->OnTimeout();
    return G_SOURCE_REMOVE;
}

}  // namespace applist::sim
