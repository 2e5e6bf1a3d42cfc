// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "common/Output.h"
#include "middleware/MainLoop.h"
#include "middleware/Middleware.h"
#include "middleware/Report.h"
#include "recording/TrafficTap.h"

namespace applist::sim {

/// Options of every session.
struct SessionOptions {
    std::string address;              ///< Address of the bus; empty for the system bus.
    std::optional<unsigned> timeout;  ///< Seconds to wait for an application; absent: no limit.
    bool json = false;                ///< Prints JSON.
    std::string recordFile;           ///< File for the recording; empty for none.
};

/// Base class of the commands that act as a middleware: joins the bus, waits for applications and
/// runs until the command or a signal ends it.
class Session {
public:
    explicit Session(SessionOptions options);
    virtual ~Session() = default;
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// Joins the bus and runs the default main context until End(). Returns the exit code of the
    /// program. Call only once.
    ExitCode Run();

protected:
    /// Called once connected, before any traffic.
    virtual void OnOpened(GDBusConnection* /*connection*/) {}
    virtual void OnConnected(const std::string& /*application*/) {}
    virtual void OnDisconnected(const std::string& /*application*/) {}
    virtual void OnNotified(const std::string& /*application*/,
                            const Notification& /*notification*/) {}
    /// Returns the exit code for SIGINT and SIGTERM.
    virtual ExitCode OnInterrupted() { return ExitCode::Success; }

    /// REQUIRES: called during Run().
    Middleware& middleware() { return m_middleware; }
    BusLink& link() { return m_middleware.link(); }
    const Report& report() const { return m_report; }
    /// Prints a line. Ends the session if standard output cannot be written.
    void Print(const std::string& line);
    /// Ends Run(). The first code wins.
    void End(ExitCode code) { m_loop.End(code); }

private:
    void Take(const Happening& happening);
    void TakeNotification(const std::string& application, const Bytes& message);
    /// Returns an empty string on success, otherwise the error of the file.
    std::string StartRecording(GDBusConnection* connection);
    ExitCode FinishRecording(ExitCode code);
    void OnTimeout();

    SessionOptions m_options;
    Report m_report;
    MainLoop m_loop;
    Registration m_clock;
    Middleware m_middleware;
    std::unique_ptr<SessionRecorder> m_recorder;
};

}  // namespace applist::sim
