// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "recording/Traffic.h"

#include <mutex>
#include <string>
#include <utility>

#include "link/Connection.h"
#include "link/Protocol.h"

namespace applist::sim {
namespace {

std::string Text(const char* text) {
    return text != nullptr ? text : std::string();
}

std::optional<Side> SideOfName(const std::string& name) {
    if (name.starts_with(names::SERVICE)) {
        return Side::Application;
    }
    return name.starts_with(names::CLIENT) ? std::optional(Side::Middleware) : std::nullopt;
}

bool IsOurs(GDBusMessage* message, const char* member) {
    return Text(g_dbus_message_get_path(message)) == names::OBJECT_PATH &&
           Text(g_dbus_message_get_interface(message)) == names::INTERFACE &&
           Text(g_dbus_message_get_member(message)) == member;
}

// Stores the bytes of the payload, or the type of an unexpected one.
void TakeContent(RecordedMessage& taken, GDBusMessage* message) {
    GVariant* body = g_dbus_message_get_body(message);
    if (body != nullptr && HoldsBytes(body)) {
        taken.bytes = FromVariant(body);
    } else {
        taken.text = body == nullptr ? "()" : g_variant_get_type_string(body);
    }
}

std::string FirstText(GDBusMessage* message) {
    GVariant* body = g_dbus_message_get_body(message);
    if (body == nullptr || g_variant_n_children(body) == 0) {
        return {};
    }
    const GVariantPtr first(g_variant_get_child_value(body, 0));
    return g_variant_is_of_type(first.get(), G_VARIANT_TYPE_STRING)
               ? g_variant_get_string(first.get(), nullptr)
               : std::string();
}

}  // namespace

std::optional<RecordedMessage> TrafficReader::Read(GDBusMessage* message, int64_t time) {
    std::optional<RecordedMessage> taken;
    switch (g_dbus_message_get_message_type(message)) {
        case G_DBUS_MESSAGE_TYPE_SIGNAL:
            taken = ReadSignal(message);
            break;
        case G_DBUS_MESSAGE_TYPE_METHOD_CALL:
            taken = ReadCall(message);
            break;
        case G_DBUS_MESSAGE_TYPE_METHOD_RETURN:
        case G_DBUS_MESSAGE_TYPE_ERROR:
            taken = ReadAnswer(message);
            break;
        case G_DBUS_MESSAGE_TYPE_INVALID:
            break;
    }
    if (taken) {
        taken->time = time;
    }
    return taken;
}

std::string TrafficReader::SenderOf(GDBusMessage* message) const {
    const std::string sender = Text(g_dbus_message_get_sender(message));
    // The bus daemon adds the sender, so an outgoing message that is seen here does not contain
    // one.
    return sender.empty() ? m_ownName : sender;
}

RecordedMessage TrafficReader::Begin(GDBusMessage* message, MessageKind kind) {
    RecordedMessage begun;
    begun.kind = kind;
    begun.from = SenderOf(message);
    begun.to = Text(g_dbus_message_get_destination(message));
    return begun;
}

std::optional<RecordedMessage> TrafficReader::ReadSignal(GDBusMessage* message) {
    if (SenderOf(message) == DAEMON) {
        return ReadOwnerChange(message);
    }
    if (!IsOurs(message, names::SIGNAL)) {
        return std::nullopt;
    }
    RecordedMessage taken = Begin(message, MessageKind::Signal);
    // A side known from the handshake takes precedence over the usual direction of signals.
    taken.side = m_sides.try_emplace(taken.from, Side::Application).first->second;
    TakeContent(taken, message);
    return taken;
}

std::optional<RecordedMessage> TrafficReader::ReadOwnerChange(GDBusMessage* message) {
    GVariant* body = g_dbus_message_get_body(message);
    const bool isChange =
        body != nullptr && Text(g_dbus_message_get_member(message)) == "NameOwnerChanged";
    const auto change = isChange ? sim::ReadOwnerChange(body) : std::nullopt;
    if (!change) {
        return std::nullopt;
    }
    const auto side = SideOfName(change->name);
    const bool released = change->newOwner.empty();
    // Of the other names only the unique names of the known connections are of interest.
    if (!side) {
        return released ? Leave(change->name) : std::nullopt;
    }
    RecordedMessage taken;
    taken.kind = released ? MessageKind::Released : MessageKind::Acquired;
    taken.side = *side;
    taken.from = released ? change->oldOwner : change->newOwner;
    taken.name = change->name;
    m_sides[taken.from] = *side;
    return taken;
}

std::optional<RecordedMessage> TrafficReader::Leave(const std::string& name) {
    const auto known = m_sides.find(name);
    if (known == m_sides.end()) {
        return std::nullopt;
    }
    RecordedMessage taken;
    taken.kind = MessageKind::Left;
    taken.side = known->second;
    taken.from = name;
    m_sides.erase(known);
    // Replies to a connection that left are not delivered, so its calls need not be kept.
    std::erase_if(m_calls, [&name](const auto& call) { return call.first.first == name; });
    return taken;
}

std::optional<RecordedMessage> TrafficReader::ReadCall(GDBusMessage* message) {
    if (!IsOurs(message, names::METHOD)) {
        return std::nullopt;
    }
    RecordedMessage taken = Begin(message, MessageKind::Call);
    taken.side = m_sides.try_emplace(taken.from, Side::Middleware).first->second;
    // The receiver may send its first signal later, and its side is then known.
    m_sides.try_emplace(taken.to, Other(taken.side));
    taken.call = ++m_lastCall;
    // In the D-Bus protocol a serial is unique for its sender only.
    m_calls[{taken.from, g_dbus_message_get_serial(message)}] = {taken.call, taken.to, taken.side};
    TakeContent(taken, message);
    return taken;
}

std::optional<RecordedMessage> TrafficReader::ReadAnswer(GDBusMessage* message) {
    const std::string caller = Text(g_dbus_message_get_destination(message));
    const auto call = m_calls.find({caller, g_dbus_message_get_reply_serial(message)});
    if (call == m_calls.end()) {
        return std::nullopt;
    }
    const bool failed = g_dbus_message_get_message_type(message) == G_DBUS_MESSAGE_TYPE_ERROR;
    RecordedMessage taken = Begin(message, failed ? MessageKind::Error : MessageKind::Reply);
    // The bus daemon replies for a connection that cannot.
    taken.from = call->second.called;
    taken.side = Other(call->second.caller);
    taken.call = call->second.number;
    m_calls.erase(call);
    if (failed) {
        taken.name = Text(g_dbus_message_get_error_name(message));
        taken.text = FirstText(message);
    } else {
        TakeContent(taken, message);
    }
    return taken;
}

/// Shared with the filter, which may still run for a moment after it was removed.
struct TrafficTap::State {
    State(std::string name, Use how, Take taker)
        : ownName(std::move(name)),
          use(how),
          begin(g_get_monotonic_time()),
          reader(ownName),
          take(std::move(taker)) {}

    void Hear(GDBusMessage* message) {
        const std::lock_guard lock(mutex);
        // The filter may still run while the tap is being destroyed.
        if (!take) {
            return;
        }
        if (const auto heard = reader.Read(message, g_get_monotonic_time() - begin)) {
            take(*heard);
        }
    }

    // GIO would answer a call that is passed on, and the bus disconnects monitors that send.
    bool Keeps(GDBusMessage* message) const {
        const char* destination = g_dbus_message_get_destination(message);
        return use == Use::Monitor && (destination == nullptr || ownName != destination);
    }

    const std::string ownName;
    const Use use;
    const int64_t begin;
    std::mutex mutex;
    TrafficReader reader;
    Take take;
};

TrafficTap::TrafficTap(GDBusConnection* connection, Use use, Take take)
    : m_connection(connection),
      m_state(std::make_shared<State>(g_dbus_connection_get_unique_name(connection), use,
                                      std::move(take))) {
    m_filter = g_dbus_connection_add_filter(
        // The filter has its own reference to the state, which GIO drops with the filter.
        connection, &TrafficTap::cb_Message, new std::shared_ptr<State>(m_state),
        [](void* state) { delete static_cast<std::shared_ptr<State>*>(state); });
}

TrafficTap::~TrafficTap() {
    {
        // The lock waits for a running callback, so the caller's objects are unused after this.
        const std::lock_guard lock(m_state->mutex);
        m_state->take = nullptr;
    }
    g_dbus_connection_remove_filter(m_connection, m_filter);
}

GDBusMessage* TrafficTap::cb_Message(GDBusConnection* /*connection*/, GDBusMessage* message,
                                     gboolean incoming, void* state) noexcept {
    State& self = **static_cast<std::shared_ptr<State>*>(state);
    self.Hear(message);
    if (incoming != FALSE && self.Keeps(message)) {
        // A filter that drops a message owns its reference.
        g_object_unref(message);
        return nullptr;
    }
    return message;
}

}  // namespace applist::sim
