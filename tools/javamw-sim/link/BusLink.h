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

/// Told what happens on the link. application is a unique bus name everywhere.
class BusLinkListener {
public:
    BusLinkListener() = default;
    virtual ~BusLinkListener() = default;
    BusLinkListener(const BusLinkListener&) = delete;
    BusLinkListener& operator=(const BusLinkListener&) = delete;
    BusLinkListener(BusLinkListener&&) = delete;
    BusLinkListener& operator=(BusLinkListener&&) = delete;

    /// The handshake is complete; calls and signals go both ways.
    virtual void Connected(const std::string& application) = 0;
    /// The application made one of the handshake's announcements; what follows from it comes next.
    virtual void Announced(const std::string& /*application*/, Announcement /*announcement*/) {}
    /// A connected application left the bus.
    virtual void Disconnected(const std::string& application) = 0;
    /// The application sent a signal.
    virtual void Notified(const std::string& application, const Bytes& message) = 0;
    /// The application called; the result is the reply.
    virtual Bytes Called(const std::string& application, const Bytes& message) = 0;
    /// Something did not work; error says what.
    virtual void LinkFailed(const std::string& error) = 0;
    /// The policy of the bus does not allow this process to be a middleware; error says what was
    /// denied. May be called from the constructor of the link.
    virtual void LinkDenied(const std::string& error) { LinkFailed(error); }
    /// The bus itself is gone: nothing comes any more.
    virtual void BusLost() = 0;
};

/// The middleware's side of the channel: finds applications, whichever started first, loses them
/// and takes the next ones, and carries bytes without looking into them.
///
/// Everything runs on the thread whose main context is the default one.
class BusLink : public MessageCaller {
public:
    /// Listens for applications and announces the middleware as planned. listener must outlive the
    /// link.
    BusLink(ConnectionPtr connection, BusLinkListener& listener, const HandshakePlan& plan = {});
    /// Gives up the calls under way without telling their callers, and closes the connection once
    /// what was sent is on its way.
    ~BusLink() override;
    BusLink(const BusLink&) = delete;
    BusLink& operator=(const BusLink&) = delete;
    BusLink(BusLink&&) = delete;
    BusLink& operator=(BusLink&&) = delete;

    /// How announcements are made from here on. An application counts as connected when ours are
    /// complete, too.
    void SetPlan(const HandshakePlan& plan) { m_announcer.SetPlan(plan); }
    /// Announces whatever the plan says.
    void AnnounceNow(Announcement announcement);

    void Call(const std::string& application, const Bytes& message, Done done) override;

    /// Emits message as a signal to one application, without waiting for it. Empty on success,
    /// otherwise the reason.
    std::string Emit(const std::string& application, const Bytes& message);

private:
    /// What is held for each application that the handshake has established.
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

    // Where the library calls back; memory running out there ends the program.
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
    std::set<std::string> m_unanswered;  ///< Connected but for an announcement of ours.
    std::map<std::string, Application> m_applications;
    Announcer m_announcer;
    GObjectPtr<GCancellable> m_cancellable;
    size_t m_pendingCalls = 0;
    std::vector<Registration> m_registrations;
};

}  // namespace applist::sim
