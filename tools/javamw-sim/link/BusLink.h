// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "link/Announcer.h"
#include "link/Connection.h"
#include "link/GioHandles.h"
#include "link/Handshake.h"
#include "link/ListClient.h"

namespace applist::sim {

/// Callbacks of a link. application is always a unique bus name.
class BusLinkListener {
public:
    BusLinkListener() = default;
    virtual ~BusLinkListener() = default;
    BusLinkListener(const BusLinkListener&) = delete;
    BusLinkListener& operator=(const BusLinkListener&) = delete;
    BusLinkListener(BusLinkListener&&) = delete;
    BusLinkListener& operator=(BusLinkListener&&) = delete;

    /// The handshake is complete; calls and signals work in both directions.
    virtual void Connected(const std::string& application) = 0;
    /// The application made one announcement of the handshake. Called before its consequences.
    virtual void Announced(const std::string& /*application*/, Announcement /*announcement*/) {}
    /// A connected application left the bus.
    virtual void Disconnected(const std::string& application) = 0;
    /// The application sent a signal.
    virtual void Notified(const std::string& application, const Bytes& message) = 0;
    /// The application called; returns the reply.
    virtual Bytes Called(const std::string& application, const Bytes& message) = 0;
    /// An operation failed; error is the reason.
    virtual void LinkFailed(const std::string& error) = 0;
    /// The policy of the bus does not allow this process to be a middleware; error says what was
    /// denied. May be called from the constructor of the link.
    virtual void LinkDenied(const std::string& error) { LinkFailed(error); }
    /// The bus closed the connection.
    virtual void BusLost() = 0;
};

/// The end of the channel that belongs to the middleware. Finds applications in either order of
/// start, notices when they leave, and carries bytes without decoding them.
///
/// All methods and callbacks run on the thread of the default main context.
class BusLink : public MessageCaller {
public:
    /// Listens for applications and announces the middleware as planned. listener must outlive the
    /// link.
    BusLink(ConnectionPtr connection, BusLinkListener& listener, const HandshakePlan& plan = {});
    /// Cancels pending calls without running their callbacks, flushes the connection and closes it.
    ~BusLink() override;
    BusLink(const BusLink&) = delete;
    BusLink& operator=(const BusLink&) = delete;
    BusLink(BusLink&&) = delete;
    BusLink& operator=(BusLink&&) = delete;

    /// Sets the plan for the following announcements. An application counts as connected when our
    /// announcements are complete, too.
    void SetPlan(const HandshakePlan& plan) { m_announcer.SetPlan(plan); }
    /// Announces now and ignores the plan.
    void AnnounceNow(Announcement announcement);

    void Call(const std::string& application, const Bytes& message, Done done) override;

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

    Registration Subscribe(const char* sender, const char* interface, const char* member,
                           const char* path, const char* argument, GDBusSignalCallback callback);
    void ExportObject();
    void ListenFor(Announcement announcement, GDBusSignalCallback callback);
    void Establish(const std::string& application);
    void Take(const HandshakeStep& step, const std::string& application);
    void ReportUnanswered();

    void OnNameOwnerChanged(Announcement announcement, GVariant* parameters);
    void OnVanished(const std::string& application);
    void OnCalled(const char* sender, GVariant* parameters, GDBusMethodInvocation* invocation);
    void OnReply(PendingCall* call, GAsyncResult* result);

    // Callbacks of the library. If memory runs out in one of them, the program ends.
    template <Announcement announcement>
    static void cb_NameOwnerChanged(GDBusConnection*, const char*, const char*, const char*,
                                    const char*, GVariant* parameters, void* link) noexcept;
    static void cb_Vanished(GDBusConnection*, const char* name, void* link) noexcept;
    static void cb_Signal(GDBusConnection*, const char* sender, const char*, const char*,
                          const char*, GVariant* parameters, void* link) noexcept;
    static void cb_MethodCall(GDBusConnection*, const char* sender, const char*, const char*,
                              const char*, GVariant* parameters, GDBusMethodInvocation* invocation,
                              void* link) noexcept;
    static void cb_Reply(GObject*, GAsyncResult* result, void* call) noexcept;
    static void cb_Closed(GDBusConnection*, int, GError*, void* link) noexcept;

    ConnectionPtr m_connection;
    BusLinkListener& m_listener;
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
