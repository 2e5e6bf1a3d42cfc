// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "support/GlibWait.h"

namespace applist::test {
namespace {

struct Answer {
    bool arrived = false;
    bool good = false;
};

void TakeAnswer(GObject* connection, GAsyncResult* result, void* data) {
    auto& answer = *static_cast<Answer*>(data);
    g_autoptr(GVariant) reply =
        g_dbus_connection_call_finish(G_DBUS_CONNECTION(connection), result, nullptr);
    answer = {true, reply != nullptr};
}

int SetTrue(void* flag) {
    *static_cast<bool*>(flag) = true;
    return G_SOURCE_REMOVE;
}

}  // namespace

bool RunUntil(const std::function<bool()>& condition, std::chrono::milliseconds patience) {
    bool late = false;
    GSource* timeout = g_timeout_source_new(static_cast<guint>(patience.count()));
    g_source_set_callback(timeout, SetTrue, &late, nullptr);
    g_source_attach(timeout, nullptr);
    bool holds = condition();
    while (!holds && !late) {
        g_main_context_iteration(nullptr, TRUE);
        holds = condition();
    }
    g_source_destroy(timeout);
    g_source_unref(timeout);
    return holds;
}

bool RoundTrip(GDBusConnection* connection) {
    // The bus answers in order, so earlier messages are dispatched before the answer.
    Answer answer;
    g_dbus_connection_call(connection, "org.freedesktop.DBus", "/org/freedesktop/DBus",
                           "org.freedesktop.DBus.Peer", "Ping", nullptr, nullptr,
                           G_DBUS_CALL_FLAGS_NONE, G_MAXINT, nullptr, TakeAnswer, &answer);
    return RunUntil([&answer] { return answer.arrived; }) && answer.good;
}

}  // namespace applist::test
