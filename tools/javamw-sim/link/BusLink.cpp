// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "link/BusLink.h"

#include <utility>

#include "link/ChannelNames.h"
#include "link/Connection.h"

namespace applist::sim {

struct BusLink::PendingCall {
    BusLink& link;
    Done done;
};

BusLink::BusLink(ConnectionPtr connection, BusLinkListener& listener, const HandshakePlan& plan)
    : m_connection(std::move(connection)),
      m_listener(listener),
      m_uniqueName(g_dbus_connection_get_unique_name(m_connection.get())),
      m_announcer(m_connection.get(),
                  {[this](const std::string& error) { m_listener.LinkFailed(error); },
                   [this](const std::string& error) { m_listener.LinkDenied(error); },
                   [this] { ReportUnanswered(); }},
                  plan),
      m_cancellable(g_cancellable_new()) {
    const unsigned long closed =
        g_signal_connect(m_connection.get(), "closed", G_CALLBACK(&BusLink::cb_Closed), this);
    m_registrations.emplace_back(
        [this, closed] { g_signal_handler_disconnect(m_connection.get(), closed); });
    ExportObject();
    ListenFor(Announcement::Syn, &cb_NameOwnerChanged<Announcement::Syn>);
    ListenFor(Announcement::SynAck, &cb_NameOwnerChanged<Announcement::SynAck>);
    ListenFor(Announcement::Ack, &cb_NameOwnerChanged<Announcement::Ack>);
    m_announcer.AnnounceAsPlanned(Announcement::Syn);
}

BusLink::~BusLink() {
    m_announcer.Stop();
    m_applications.clear();
    m_registrations.clear();
    g_cancellable_cancel(m_cancellable.get());
    while (m_pendingCalls > 0) {
        g_main_context_iteration(nullptr, TRUE);
    }
    g_dbus_connection_flush_sync(m_connection.get(), nullptr, nullptr);
    g_dbus_connection_close_sync(m_connection.get(), nullptr, nullptr);
}

void BusLink::AnnounceNow(Announcement announcement) {
    m_announcer.AnnounceNow(announcement);
    ReportUnanswered();
}

void BusLink::Call(const std::string& application, const Bytes& message, Done done) {
    ++m_pendingCalls;
    auto call = std::make_unique<PendingCall>(PendingCall{*this, std::move(done)});
    g_dbus_connection_call(m_connection.get(), application.c_str(), names::OBJECT_PATH,
                           names::INTERFACE, names::METHOD, ToVariant(message),
                           G_VARIANT_TYPE("(ay)"), G_DBUS_CALL_FLAGS_NO_AUTO_START, -1,
                           m_cancellable.get(), &BusLink::cb_Reply, call.release());
}

std::string BusLink::Emit(const std::string& application, const Bytes& message) {
    GError* error = nullptr;
    g_dbus_connection_emit_signal(m_connection.get(), application.c_str(), names::OBJECT_PATH,
                                  names::INTERFACE, names::SIGNAL, ToVariant(message), &error);
    return error == nullptr ? std::string() : TakeMessage(error);
}

Registration BusLink::Subscribe(const char* sender, const char* interface, const char* member,
                                const char* path, const char* argument,
                                GDBusSignalCallback callback) {
    GDBusConnection* connection = m_connection.get();
    const unsigned id =
        g_dbus_connection_signal_subscribe(connection, sender, interface, member, path, argument,
                                           G_DBUS_SIGNAL_FLAGS_NONE, callback, this, nullptr);
    return Registration([connection, id] { g_dbus_connection_signal_unsubscribe(connection, id); });
}

void BusLink::ExportObject() {
    static constexpr GDBusInterfaceVTable VTABLE{&BusLink::cb_MethodCall, nullptr, nullptr, {}};
    const GNodeInfoPtr info(g_dbus_node_info_new_for_xml(names::INTERFACE_XML, nullptr));
    GError* error = nullptr;
    const unsigned id =
        g_dbus_connection_register_object(m_connection.get(), names::OBJECT_PATH,
                                          info->interfaces[0], &VTABLE, this, nullptr, &error);
    if (error != nullptr) {
        m_listener.LinkFailed(std::string("cannot serve ") + names::OBJECT_PATH + ": " +
                              TakeMessage(error));
        return;
    }
    m_registrations.emplace_back(
        [this, id] { g_dbus_connection_unregister_object(m_connection.get(), id); });
}

void BusLink::ListenFor(Announcement announcement, GDBusSignalCallback callback) {
    const std::string name = names::NameOf(names::SERVICE, announcement);
    m_registrations.push_back(Subscribe("org.freedesktop.DBus", "org.freedesktop.DBus",
                                        "NameOwnerChanged", "/org/freedesktop/DBus", name.c_str(),
                                        callback));
}

void BusLink::Establish(const std::string& application) {
    Application& held = m_applications[application];
    held.signals = Subscribe(application.c_str(), names::INTERFACE, names::SIGNAL,
                             names::OBJECT_PATH, nullptr, &cb_Signal);
    const unsigned watch = g_bus_watch_name_on_connection(m_connection.get(), application.c_str(),
                                                          G_BUS_NAME_WATCHER_FLAGS_NONE, nullptr,
                                                          &cb_Vanished, this, nullptr);
    held.watch = Registration([watch] { g_bus_unwatch_name(watch); });
}

void BusLink::Take(const HandshakeStep& step, const std::string& application) {
    if (step.lost && m_unanswered.erase(application) == 0) {
        m_listener.Disconnected(application);
    }
    if (step.establish) {
        Establish(application);
    }
    const bool answered = !step.answer || m_announcer.AnnounceAsPlanned(*step.answer);
    if (step.connected && answered) {
        m_listener.Connected(application);
    } else if (step.connected) {
        m_unanswered.insert(application);
    }
}

void BusLink::ReportUnanswered() {
    for (const std::string& application : std::exchange(m_unanswered, {})) {
        m_listener.Connected(application);
    }
}

// The release of a handshake name is the announcement. Its former owner made it.
void BusLink::OnNameOwnerChanged(Announcement announcement, GVariant* parameters) {
    const char* name = nullptr;
    const char* oldOwner = nullptr;
    const char* newOwner = nullptr;
    if (!g_variant_is_of_type(parameters, G_VARIANT_TYPE("(sss)"))) {
        return;
    }
    g_variant_get(parameters, "(&s&s&s)", &name, &oldOwner, &newOwner);
    const bool released = *newOwner == '\0' && *oldOwner != '\0';
    if (released && m_uniqueName != oldOwner) {
        const std::string application = oldOwner;
        m_listener.Announced(application, announcement);
        Take(m_handshake.Heard(announcement, application), application);
    }
}

void BusLink::OnVanished(const std::string& application) {
    m_applications.erase(application);
    Take(m_handshake.Lost(application), application);
}

void BusLink::OnCalled(const char* sender, GVariant* parameters,
                       GDBusMethodInvocation* invocation) {
    const Bytes reply = m_listener.Called(sender, FromVariant(parameters));
    g_dbus_method_invocation_return_value(invocation, ToVariant(reply));
}

void BusLink::OnReply(PendingCall* call, GAsyncResult* result) {
    const std::unique_ptr<PendingCall> owned(call);
    --m_pendingCalls;
    GError* error = nullptr;
    const GVariantPtr reply(g_dbus_connection_call_finish(m_connection.get(), result, &error));
    if (g_cancellable_is_cancelled(m_cancellable.get())) {
        g_clear_error(&error);
    } else if (reply) {
        owned->done(FromVariant(reply.get()));
    } else {
        owned->done(Result<Bytes>::Failure(TakeMessage(error)));
    }
}

template <Announcement announcement>
void BusLink::cb_NameOwnerChanged(GDBusConnection* /*connection*/, const char* /*sender*/,
                                  const char* /*path*/, const char* /*interface*/,
                                  const char* /*member*/, GVariant* parameters,
                                  void* link) noexcept {
    static_cast<BusLink*>(link)->OnNameOwnerChanged(announcement, parameters);
}

void BusLink::cb_Vanished(GDBusConnection* /*connection*/, const char* name, void* link) noexcept {
    static_cast<BusLink*>(link)->OnVanished(name);
}

void BusLink::cb_Signal(GDBusConnection* /*connection*/, const char* sender, const char* /*path*/,
                        const char* /*interface*/, const char* /*member*/, GVariant* parameters,
                        void* link) noexcept {
    if (HoldsBytes(parameters)) {
        static_cast<BusLink*>(link)->m_listener.Notified(sender, FromVariant(parameters));
    }
}

void BusLink::cb_MethodCall(GDBusConnection* /*connection*/, const char* sender,
                            const char* /*path*/, const char* /*interface*/, const char* /*method*/,
                            GVariant* parameters, GDBusMethodInvocation* invocation,
                            void* link) noexcept {
    static_cast<BusLink*>(link)->OnCalled(sender, parameters, invocation);
}

void BusLink::cb_Reply(GObject* /*connection*/, GAsyncResult* result, void* call) noexcept {
    auto* pending = static_cast<PendingCall*>(call);
    pending->link.OnReply(pending, result);
}

void BusLink::cb_Closed(GDBusConnection* /*connection*/, int /*remotePeerVanished*/,
                        GError* /*error*/, void* link) noexcept {
    static_cast<BusLink*>(link)->m_listener.BusLost();
}

}  // namespace applist::sim
