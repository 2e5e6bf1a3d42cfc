// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "feed/Feed.h"
#include "middleware/MainLoop.h"
#include "middleware/Middleware.h"
#include "middleware/Report.h"
#include "recording/Recording.h"
#include "recording/RecordingFile.h"

namespace applist::sim {

/// Options of sessions. Those of the shell and of scenarios have neither a timeout nor a recording.
struct SessionOptions {
    std::string address{};              ///< Address of the bus; empty for the system bus.
    std::optional<unsigned> timeout{};  ///< Seconds to wait for an application; absent: no limit.
    bool json = false;                  ///< Prints JSON.
    std::string recordFile{};           ///< File for the recording; empty for none.
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
    /// Called once joined. The session runs on until End() when this has returned.
    virtual void Play() {}
    /// Returns the exit code for SIGINT and SIGTERM.
    virtual ExitCode OnInterrupted() { return ExitCode::Success; }

    /// REQUIRES: called during Run().
    Middleware& middleware() { return m_middleware; }
    BusLink& link() { return m_middleware.link(); }
    const Report& report() const { return m_report; }
    void Print(const std::string& line) { m_loop.Print(line); }
    /// Runs the main context until done returns true or the session ends, but at most for patience.
    void Await(const std::function<bool()>& done,
               std::optional<std::chrono::milliseconds> patience = std::nullopt) {
        RunUntil([&] { return done() || ended(); }, patience);
    }
    /// Waits for the first application that connects.
    void AwaitFirst() {
        Await([this] { return !m_first.empty(); });
    }
    /// The first application that has connected; empty if none has.
    const std::string& first() const { return m_first; }
    /// Ends Run(). The first code wins.
    void End(ExitCode code) { m_loop.End(code); }
    bool ended() const { return m_loop.exitCode().has_value(); }

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
    std::string m_first;
    Middleware m_middleware;
    std::unique_ptr<SessionRecorder> m_recorder;
};

// The commands that act as a middleware, and the command that records other middlewares. Each runs
// the default main context until the command ends, and returns the exit code of the program.

/// Prints every event of every application until a signal ends it.
ExitCode Watch(const SessionOptions& options);

/// Fills the list of every application that sends LocalCreated, then watches. Applies the changes
/// of the feed over time, starting when the first list is filled.
///
/// The application sends LocalCreated to each middleware that it has connected. The handshake alone
/// is not sufficient: announcements are broadcast, so one that another middleware caused looks like
/// ours. Calls before LocalCreated are answered, but their events are lost.
ExitCode Serve(const SessionOptions& options, Feed feed);

/// Calls one function of the first application that connects and prints the items of the reply.
ExitCode CallOnce(const SessionOptions& options, const FunctionCall& call);

/// Options of Replay().
struct ReplayOptions {
    std::string file;  ///< File name for messages.
    /// Factor relative to the recording; absent: as fast as possible.
    std::optional<double> speed = 1;
    unsigned patience = 2;  ///< Seconds to wait for messages that are still missing.
    bool json = false;
};

/// Sends the messages of the recorded middleware to the first application that connects, and
/// reports where the application behaves differently from the recorded one.
///
/// A message is sent only after as many calls are answered as in the recording, so the order of the
/// messages of the application does not depend on the speed.
ExitCode Replay(const SessionOptions& session, const ReplayOptions& options,
                const Conversation& conversation);

/// Records the traffic between other middlewares and applications on a bus until a signal ends it.
/// A bus allows this only to its owner and to root. address may be empty for the system bus; file
/// may be "-" for standard output.
ExitCode RecordBus(const std::string& address, const std::string& file);

}  // namespace applist::sim
