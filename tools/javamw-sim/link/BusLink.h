// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "GlibHandles.h"
#include "link/Announcer.h"
#include "link/Connection.h"
#include "link/Handshake.h"
#include "link/Protocol.h"

namespace applist::sim {

/// Something that happens to a middleware.
struct Happening {
    enum class Kind {
        Connected,     ///< The handshake with the application is complete.
        Disconnected,  ///< The application left the bus.
        Announced,     ///< The application made an announcement of the handshake.
        Notified,      ///< The application sent a signal.
        Called,        ///< The application called and got an empty reply.
        Failed,        ///< An operation on the bus failed.
        Denied,        ///< The policy of the bus denies the names of the middleware.
        BusLost,       ///< The bus closed the connection.
    };
    Kind kind{};
    std::string application{};    ///< Unique bus name; empty for the last three.
    Bytes message{};              ///< Of a signal or a call.
    Announcement announcement{};  ///< Only if announced.
    std::string problem{};        ///< Text of the last three.
};

/// Describes happening on one line: "connected :1.2", "event 1 ItemChanged".
std::string Describe(const Happening& happening);

/// The end of the channel that belongs to the middleware. Finds applications in either order of
/// start, notices when they leave, and carries bytes without decoding them.
///
/// All methods and callbacks run on the thread of the default main context.
class BusLink {
public:
    using Observer = std::function<void(const Happening& happening)>;
    /// The payload of a reply, or an error.
    using Done = std::function<void(const Result<Bytes>& reply)>;

    /// Listens for applications and announces the middleware as planned. May run observer.
    BusLink(ConnectionPtr connection, Observer observer, const HandshakePlan& plan = {});
    /// Cancels pending calls without running their callbacks, flushes the connection and closes it.
    ~BusLink();
    BusLink(const BusLink&) = delete;
    BusLink& operator=(const BusLink&) = delete;

    /// Sets the plan for the following announcements. An application counts as connected when our
    /// announcements are complete, too.
    void SetPlan(const HandshakePlan& plan) { m_announcer.SetPlan(plan); }
    /// Announces now and ignores the plan.
    void AnnounceNow(Announcement announcement);

    /// Sends message to an application and returns at once. Runs done later on the thread of the
    /// main loop. Calls to one application are answered in order.
    ///
    /// The application sends the events that a call causes before the reply, so an observer must
    /// not block until done runs.
    void Call(const std::string& application, const Bytes& message, Done done);
    /// Calls a function of the list with items instead of bytes. Most functions reply without
    /// items.
    void Call(const std::string& application, Function function, const Items& items,
              std::function<void(const Result<Items>& reply)> done);

    /// Emits message as a signal to one application and returns at once. Returns an empty string on
    /// success, otherwise the reason.
    std::string Emit(const std::string& application, const Bytes& message);

private:
    /// Held for each application that the handshake has established.
    struct Application {
        Registration watch;
        Registration signals;
    };
    struct PendingCall;

    void ExportObject();
    void ListenFor(Announcement announcement);
    void Establish(const std::string& application);
    void Take(const HandshakeStep& step, const std::string& application);
    void ReportUnanswered();

    void OnNameOwnerChanged(Announcement announcement, GVariant* parameters);
    void OnVanished(const std::string& application);
    void OnCalled(const char* sender, GVariant* parameters, GDBusMethodInvocation* invocation);
    void OnReply(PendingCall* call, GAsyncResult* result);
    void Tell(Happening::Kind kind, const std::string& application);

    ConnectionPtr m_connection;
    Observer m_observer;
    std::string m_uniqueName;
    Handshake m_handshake;
    std::set<std::string> m_unanswered;  ///< Connected except for one of our announcements.
    std::map<std::string, Application> m_applications;
    Announcer m_announcer;
    GObjectPtr<GCancellable> m_cancellable;
    size_t m_pendingCalls = 0;
    std::vector<Registration> m_registrations;
};

}  // namespace applist::sim
