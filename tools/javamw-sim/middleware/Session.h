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

/// What every command is given.
struct SessionOptions {
    std::string address;              ///< Of the bus; empty for the system bus.
    std::optional<unsigned> timeout;  ///< Seconds to wait for an application; none: for ever.
    bool json = false;                ///< Output for machines.
    std::string recordFile;           ///< Where to record all traffic; empty for nowhere.
};

/// One run of a command: opens the bus, waits for applications and runs until the command or a
/// signal ends it. The commands derive from it.
class Session : public BusLinkListener {
public:
    explicit Session(SessionOptions options);
    ~Session() override;
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    Session(Session&&) = delete;
    Session& operator=(Session&&) = delete;

    /// Runs to the end on the default main context. Once only.
    ExitCode Run();

protected:
    /// The bus is there; what passes connection begins after this.
    virtual void OnOpened(GDBusConnection* /*connection*/) {}
    virtual void OnConnected(const std::string& application) = 0;
    virtual void OnDisconnected(const std::string& application) = 0;
    virtual void OnNotified(const std::string& application, const Notification& notification) = 0;
    /// What SIGINT and SIGTERM mean: the regular end of a command that runs until then.
    virtual ExitCode OnInterrupted() { return ExitCode::Success; }

    /// REQUIRES: Run() is under way.
    ListClient& client() { return *m_client; }
    const Report& report() const { return *m_report; }
    BusLink& link() { return *m_link; }
    /// Prints a line; the session ends when nobody can read it.
    void Print(const std::string& line);
    /// Ends Run(); the first code given counts.
    void End(ExitCode code) { m_loop.End(code); }

private:
    void Connected(const std::string& application) final;
    void Disconnected(const std::string& application) final;
    void Notified(const std::string& application, const Bytes& message) final;
    Bytes Called(const std::string& application, const Bytes& message) final;
    void LinkFailed(const std::string& error) final;
    void LinkDenied(const std::string& error) final;
    void BusLost() final;

    /// Empty on success, otherwise what is wrong with the file.
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
