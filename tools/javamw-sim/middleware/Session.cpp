// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "middleware/Session.h"

#include <utility>

#include "common/Output.h"

namespace applist::sim {
namespace {

constexpr const char* HIDDEN_HINT =
    "an application that offers no data services shows a notice and does not announce itself; "
    "\"platformctl visible\" says whether that is so";

ConnectionPtr Share(const ConnectionPtr& connection) {
    return ConnectionPtr(G_DBUS_CONNECTION(g_object_ref(connection.get())));
}

}  // namespace

Session::Session(SessionOptions options)
    : m_options(std::move(options)),
      m_report(m_options.json ? JsonReport() : TextReport(OutputTakesColours())) {}

Session::~Session() = default;

ExitCode Session::Run() {
    auto connection = OpenBus(m_options.address);
    if (!connection) {
        Complain("cannot reach the bus: " + connection.error());
        return ExitCode::NoBus;
    }
    m_connection = std::move(*connection);
    const std::string error = StartRecording(m_connection.get());
    if (!error.empty()) {
        Complain(error);
        return ExitCode::WrongUsage;
    }
    WatchClock();
    OnOpened(m_connection.get());
    m_link = std::make_unique<BusLink>(Share(m_connection), *this);
    m_client = std::make_unique<ListClient>(*m_link);
    return FinishRecording(m_loop.Run());
}

void Session::Print(const std::string& line) {
    if (!WriteLine(line)) {
        End(ExitCode::CallFailed);
    }
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
                 application + " does not contain a message id");
    }
}

Bytes Session::Called(const std::string& application, const Bytes& message) {
    Complain("call of " + std::to_string(message.size()) + " bytes from " + application +
             " answered with an empty reply");
    return {};
}

void Session::LinkFailed(const std::string& error) {
    Complain(error);
}

void Session::LinkDenied(const std::string& error) {
    Complain(error + '\n' + DENIED_HINT);
    End(ExitCode::NoBus);
}

void Session::BusLost() {
    Complain("the bus closed the connection");
    End(ExitCode::NoBus);
}

std::string Session::StartRecording(GDBusConnection* connection) {
    if (m_options.recordFile.empty()) {
        return {};
    }
    auto recorder =
        SessionRecorder::Start(connection, TrafficTap::Use::Participant, m_options.recordFile);
    if (recorder) {
        m_recorder = std::move(*recorder);
    }
    return recorder.error();
}

ExitCode Session::FinishRecording(ExitCode code) {
    const std::string error = m_recorder ? m_recorder->Finish() : std::string();
    if (!error.empty()) {
        Complain(error);
    }
    return error.empty() || code != ExitCode::Success ? code : ExitCode::CallFailed;
}

void Session::WatchClock() {
    if (m_options.timeout) {
        m_clock = OwnSource(g_timeout_add_seconds(*m_options.timeout, &cb_Timeout, this));
    }
}

void Session::OnTimeout() {
    m_clock.Forget();
    Complain("no application within " + std::to_string(*m_options.timeout) + " s\n" + HIDDEN_HINT);
    End(ExitCode::NoApplication);
}

int Session::cb_Timeout(void* session) noexcept {
    static_cast<Session*>(session)->OnTimeout();
    return G_SOURCE_REMOVE;
}

}  // namespace applist::sim
