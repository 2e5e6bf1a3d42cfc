// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "link/BusLink.h"

#include <utility>

#include "link/Connection.h"
#include "link/Protocol.h"

namespace applist::sim {

using Kind = Happening::Kind;

std::string Describe(const Happening& happening) {
    switch (happening.kind) {
        case Kind::Connected:
            return "connected " + happening.application;
        case Kind::Disconnected:
            return "disconnected " + happening.application;
        case Kind::Announced:
            return "announcement " + std::string(NameOf(happening.announcement));
        case Kind::Notified:
            return DescribeMessage(happening.message);
        case Kind::Called:
            return "call of " + std::to_string(happening.message.size()) + " bytes from " +
                   happening.application;
        case Kind::Failed:
        case Kind::Denied:
        case Kind::BusLost:
            break;
    }
    return happening.problem;
}

struct BusLink::PendingCall {
    BusLink& link;
    Done done;
};

BusLink::BusLink(ConnectionPtr connection, Observer observer, const HandshakePlan& plan)
    : m_connection(std::move(connection)),
      m_observer(std::move(observer)),
      m_uniqueName(g_dbus_connection_get_unique_name(m_connection.get())),
      m_announcer(m_connection.get(),
                  {[this](bool denied, const std::string& error) {
                       m_observer({.kind = denied ? Kind::Denied : Kind::Failed, .problem = error});
                   },
                   [this] { ReportUnanswered(); }},
                  plan),
      m_cancellable(g_cancellable_new()) {
    m_registrations.push_back(WhenClosed(m_connection.get(), [this] {
        m_observer({.kind = Kind::BusLost, .problem = "the bus closed the connection"});
    }));
    // All listeners are in place before the announcement, because an application may answer at
    // once.
    ExportObject();
    for (const Announcement announcement : ANNOUNCEMENTS) {
        ListenFor(announcement);
    }
    m_announcer.AnnounceAsPlanned(Announcement::Syn);
}

BusLink::~BusLink() {
    // No announcement may be sent while the rest is torn down.
    m_announcer.Stop();
    m_applications.clear();
    m_registrations.clear();
    g_cancellable_cancel(m_cancellable.get());
    // The callbacks of the cancelled calls use this object, so they must run before it is
    // destroyed.
    while (m_pendingCalls > 0) {
        g_main_context_iteration(nullptr, TRUE);
    }
    // Signals are only queued when emitted, and closing would discard them.
    g_dbus_connection_flush_sync(m_connection.get(), nullptr, nullptr);
    g_dbus_connection_close_sync(m_connection.get(), nullptr, nullptr);
}

void BusLink::AnnounceNow(Announcement announcement) {
    m_announcer.AnnounceNow(announcement);
    ReportUnanswered();
}

void BusLink::Call(const std::string& application, const Bytes& message, Done done) {
    // The destructor waits for the callbacks of all calls that are counted here.
    ++m_pendingCalls;
    // GIO always runs the callback once, also after a cancellation. OnReply() deletes the call.
    auto call = std::make_unique<PendingCall>(PendingCall{*this, std::move(done)});
    g_dbus_connection_call(
        m_connection.get(), application.c_str(), names::OBJECT_PATH, names::INTERFACE,
        names::METHOD, ToVariant(message), G_VARIANT_TYPE("(ay)"), G_DBUS_CALL_FLAGS_NO_AUTO_START,
        -1, m_cancellable.get(),
        [](GObject*, GAsyncResult* result, void* pending) noexcept {
            auto* answered = static_cast<PendingCall*>(pending);
            answered->link.OnReply(answered, result);
        },
        call.release());
}

void BusLink::Call(const std::string& application, Function function, const Items& items,
                   std::function<void(const Result<Items>& reply)> done) {
    Call(application, EncodeCall(function, items),
         [done = std::move(done)](const Result<Bytes>& reply) { done(ItemsOfReply(reply)); });
}

std::string BusLink::Emit(const std::string& application, const Bytes& message) {
    GError* error = nullptr;
    g_dbus_connection_emit_signal(m_connection.get(), application.c_str(), names::OBJECT_PATH,
                                  names::INTERFACE, names::SIGNAL, ToVariant(message), &error);
    return error == nullptr ? std::string() : TakeMessage(error);
}

void BusLink::ExportObject() {
    static constexpr GDBusInterfaceVTable VTABLE{
        [](GDBusConnection*, const char* sender, const char*, const char*, const char*,
           GVariant* parameters, GDBusMethodInvocation* invocation, void* link) noexcept {
            static_cast<BusLink*>(link)->OnCalled(sender, parameters, invocation);
        },
        nullptr,
        nullptr,
        {}};
    g_autoptr(GDBusNodeInfo) info = g_dbus_node_info_new_for_xml(names::INTERFACE_XML, nullptr);
    GError* error = nullptr;
    const unsigned id =
        g_dbus_connection_register_object(m_connection.get(), names::OBJECT_PATH,
                                          info->interfaces[0], &VTABLE, this, nullptr, &error);
    if (error != nullptr) {
        m_observer({.kind = Kind::Failed,
                    .problem = std::string("cannot serve ") + names::OBJECT_PATH + ": " +
                               TakeMessage(error)});
        return;
    }
    m_registrations.emplace_back(
        [this, id] { g_dbus_connection_unregister_object(m_connection.get(), id); });
}

void BusLink::ListenFor(Announcement announcement) {
    const std::string name = names::NameOf(names::SERVICE, announcement);
    m_registrations.push_back(Subscribe(m_connection.get(), OwnerChangesOf(name.c_str()),
                                        [this, announcement](const auto&, GVariant* parameters) {
                                            OnNameOwnerChanged(announcement, parameters);
                                        }));
}

void BusLink::Establish(const std::string& application) {
    // After a repeated SYN the new registrations replace the former ones.
    Application& held = m_applications[application];
    held.signals = Subscribe(m_connection.get(),
                             {.sender = application.c_str(),
                              .interface = names::INTERFACE,
                              .member = names::SIGNAL,
                              .path = names::OBJECT_PATH},
                             [this](const std::string& sender, GVariant* parameters) {
                                 if (HoldsBytes(parameters)) {
                                     m_observer({.kind = Kind::Notified,
                                                 .application = sender,
                                                 .message = FromVariant(parameters)});
                                 }
                             });
    // GIO also reports an application that left before the watch began.
    const unsigned watch = g_bus_watch_name_on_connection(
        m_connection.get(), application.c_str(), G_BUS_NAME_WATCHER_FLAGS_NONE, nullptr,
        [](GDBusConnection*, const char* name, void* link) noexcept {
            static_cast<BusLink*>(link)->OnVanished(name);
        },
        this, nullptr);
    held.watch = Registration([watch] { g_bus_unwatch_name(watch); });
}

void BusLink::Take(const HandshakeStep& step, const std::string& application) {
    // An application whose connection was not reported yet is not reported as disconnected.
    if (step.lost && m_unanswered.erase(application) == 0) {
        Tell(Kind::Disconnected, application);
    }
    // The subscription precedes the answer, because the application may send events when it
    // receives it.
    if (step.establish) {
        Establish(application);
    }
    const bool answered = !step.answer || m_announcer.AnnounceAsPlanned(*step.answer);
    if (step.connected && answered) {
        Tell(Kind::Connected, application);
    } else if (step.connected) {
        m_unanswered.insert(application);
    }
}

void BusLink::ReportUnanswered() {
    // The set is emptied first, because an observer may announce again.
    for (const std::string& application : std::exchange(m_unanswered, {})) {
        Tell(Kind::Connected, application);
    }
}

// The release of a handshake name is the announcement. Its former owner made it.
void BusLink::OnNameOwnerChanged(Announcement announcement, GVariant* parameters) {
    const auto change = ReadOwnerChange(parameters);
    const bool released = change && change->newOwner.empty() && !change->oldOwner.empty();
    // Our own announcements are broadcast to us, too.
    if (released && change->oldOwner != m_uniqueName) {
        const std::string& application = change->oldOwner;
        m_observer(
            {.kind = Kind::Announced, .application = application, .announcement = announcement});
        Take(m_handshake.Heard(announcement, application), application);
    }
}

void BusLink::OnVanished(const std::string& application) {
    m_applications.erase(application);
    Take(m_handshake.Lost(application), application);
}

void BusLink::OnCalled(const char* sender, GVariant* parameters,
                       GDBusMethodInvocation* invocation) {
    m_observer({.kind = Kind::Called, .application = sender, .message = FromVariant(parameters)});
    // A call must be answered, otherwise the caller waits for its timeout.
    g_dbus_method_invocation_return_value(invocation, ToVariant({}));
}

void BusLink::Tell(Kind kind, const std::string& application) {
    m_observer({.kind = kind, .application = application});
}

void BusLink::OnReply(PendingCall* call, GAsyncResult* result) {
    const std::unique_ptr<PendingCall> owned(call);
    --m_pendingCalls;
    GError* error = nullptr;
    const GVariantPtr reply(g_dbus_connection_call_finish(m_connection.get(), result, &error));
    // The link is being destroyed, so the callers may no longer exist.
    if (g_cancellable_is_cancelled(m_cancellable.get())) {
        g_clear_error(&error);
    } else if (reply) {
        owned->done(FromVariant(reply.get()));
    } else {
        owned->done(Result<Bytes>::Failure(TakeMessage(error)));
    }
}

}  // namespace applist::sim
