// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "common/Output.h"
#include "link/BusLink.h"
#include "link/ListClient.h"
#include "middleware/MainLoop.h"
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

/// Base class of the commands: opens the bus, waits for applications and runs until the command or
/// a signal ends it.
class Session : public BusLinkListener {
public:
    explicit Session(SessionOptions options);
    ~Session() override;
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    Session(Session&&) = delete;
    Session& operator=(Session&&) = delete;

    /// Runs the default main context to the end. Call only once.
    ExitCode Run();

protected:
    /// Called once connected, before any traffic.
    virtual void OnOpened(GDBusConnection* /*connection*/) {}
    virtual void OnConnected(const std::string& application) = 0;
    virtual void OnDisconnected(const std::string& application) = 0;
    virtual void OnNotified(const std::string& application, const Notification& notification) = 0;
    /// Returns the exit code for SIGINT and SIGTERM.
    virtual ExitCode OnInterrupted() { return ExitCode::Success; }

    /// REQUIRES: called during Run().
    ListClient& client() { return *m_client; }
    const Report& report() const { return *m_report; }
    BusLink& link() { return *m_link; }
    /// Prints a line. Ends the session if standard output cannot be written.
    void Print(const std::string& line);
    /// Ends Run(). The first code wins.
    void End(ExitCode code) { m_loop.End(code); }

private:
    void Connected(const std::string& application) final;
    void Disconnected(const std::string& application) final;
    void Notified(const std::string& application, const Bytes& message) final;
    Bytes Called(const std::string& application, const Bytes& message) final;
    void LinkFailed(const std::string& error) final;
    void LinkDenied(const std::string& error) final;
    void BusLost() final;

    /// Returns an empty string on success, otherwise the error of the file.
    std::string StartRecording(GDBusConnection* connection);
    ExitCode FinishRecording(ExitCode code);
    void WatchClock();
    void OnTimeout();
    static int cb_Timeout(void* session) noexcept;

    SessionOptions m_options;
    std::unique_ptr<Report> m_report;
    MainLoop m_loop{[this] { return OnInterrupted(); }};
    ConnectionPtr m_connection;
    std::unique_ptr<SessionRecorder> m_recorder;
    std::unique_ptr<BusLink> m_link;
    std::unique_ptr<ListClient> m_client;
    Registration m_clock;
};

}  // namespace applist::sim
