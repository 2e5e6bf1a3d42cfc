// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "middleware/Session.h"

#include <chrono>
#include <csignal>
#include <utility>

#include "common/Output.h"

namespace applist::sim {
namespace {

constexpr const char* HIDDEN_HINT =
    "an application that offers no data services shows a notice and does not announce itself; "
    "\"platformctl visible\" says whether that is so";

}  // namespace

Session::Session(SessionOptions options)
    : m_options(std::move(options)),
      m_report(m_options.json, OutputTakesColours()),
      m_middleware("middleware", m_options.address,
                   [this](Middleware&, const Happening& happening) { Take(happening); }) {
    for (const int number : {SIGINT, SIGTERM}) {
        m_loop.OnSignal(number, [this] { End(OnInterrupted()); });
    }
}

ExitCode Session::Run() {
    // A failure before the connection is open is one of the bus. Later, only the recording file can
    // fail.
    ExitCode failure = ExitCode::NoBus;
    const std::string problem = m_middleware.Join([&](GDBusConnection* connection) {
        failure = ExitCode::WrongUsage;
        OnOpened(connection);
        return StartRecording(connection);
    });
    if (!problem.empty()) {
        Complain(problem);
        return failure;
    }
    return FinishRecording(m_loop.Run());
}

void Session::Print(const std::string& line) {
    // A reader such as head may close the pipe. The session would otherwise run on without output.
    if (!WriteLine(line)) {
        End(ExitCode::CallFailed);
    }
}

void Session::Take(const Happening& happening) {
    switch (happening.kind) {
        case Happening::Kind::Connected:
            // The time limit applies to the first connection only.
            m_clock.Release();
            OnConnected(happening.application);
            break;
        case Happening::Kind::Disconnected:
            OnDisconnected(happening.application);
            break;
        case Happening::Kind::Announced:
            break;
        case Happening::Kind::Notified:
            TakeNotification(happening.application, happening.message);
            break;
        case Happening::Kind::Called:
            Complain(Describe(happening) + " answered with an empty reply");
            break;
        case Happening::Kind::Failed:
            Complain(happening.problem);
            break;
        case Happening::Kind::Denied:
            Complain(happening.problem + '\n' + DENIED_HINT);
            End(ExitCode::NoBus);
            break;
        case Happening::Kind::BusLost:
            Complain(happening.problem);
            End(ExitCode::NoBus);
            break;
    }
}

void Session::TakeNotification(const std::string& application, const Bytes& message) {
    if (const auto notification = DecodeNotification(message)) {
        OnNotified(application, *notification);
    } else {
        Complain("notification of " + std::to_string(message.size()) + " bytes from " +
                 application + " does not contain a message id");
    }
}

std::string Session::StartRecording(GDBusConnection* connection) {
    if (m_options.timeout) {
        m_clock = RunAfter(std::chrono::seconds(*m_options.timeout), [this] { OnTimeout(); });
    }
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
    // A failed recording makes a successful session fail, but does not hide its own exit code.
    return error.empty() || code != ExitCode::Success ? code : ExitCode::CallFailed;
}

void Session::OnTimeout() {
    Complain("no application within " + std::to_string(*m_options.timeout) + " s\n" + HIDDEN_HINT);
    End(ExitCode::NoApplication);
}

}  // namespace applist::sim
