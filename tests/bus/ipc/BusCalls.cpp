// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "BusCalls.h"

#include <utility>

namespace applist::test {
namespace {

// Watches and subscriptions are numbered separately. An offset keeps their ids apart.
constexpr guint WATCH_OFFSET = 1000000;

/// What each id was given for, by the id.
std::map<guint, std::string>& Subjects() {
    static std::map<guint, std::string> subjects;
    return subjects;
}

std::string Text(const char* text) {
    return text != nullptr ? text : "any";
}

bool IsRecorded(const GDBusConnection* connection) {
    return connection != nullptr && connection == TheBusCalls().connection;
}

void Record(const std::string& call) {
    TheBusCalls().calls.push_back(call);
}

void RecordRelease(void* /*data*/, GObject* /*proxy*/) {
    Record("release the proxy");
}

std::string Describe(const char* destination, const char* path, const char* interface,
                     const char* method, GVariant* parameters, const GVariantType* replyType) {
    g_autofree char* arguments =
        parameters != nullptr ? g_variant_print(parameters, FALSE) : nullptr;
    g_autofree char* reply = replyType != nullptr ? g_variant_type_dup_string(replyType) : nullptr;
    return Text(destination) + " " + Text(path) + " " + Text(interface) + " " + Text(method) + " " +
           Text(arguments) + " -> " + Text(reply);
}

}  // namespace

BusCalls& TheBusCalls() {
    static BusCalls calls;
    return calls;
}

}  // namespace applist::test

using applist::test::Describe;
using applist::test::IsRecorded;
using applist::test::Record;
using applist::test::RecordRelease;
using applist::test::Subjects;
using applist::test::Text;
using applist::test::TheBusCalls;
using applist::test::WATCH_OFFSET;

// The linker sends calls of NAME to __wrap_NAME, and of __real_NAME to the bus library.
// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
extern "C" {
decltype(g_dbus_connection_signal_subscribe) __real_g_dbus_connection_signal_subscribe;
decltype(g_dbus_connection_signal_subscribe) __wrap_g_dbus_connection_signal_subscribe;
decltype(g_dbus_connection_signal_unsubscribe) __real_g_dbus_connection_signal_unsubscribe;
decltype(g_dbus_connection_signal_unsubscribe) __wrap_g_dbus_connection_signal_unsubscribe;
decltype(g_bus_watch_name_on_connection) __real_g_bus_watch_name_on_connection;
decltype(g_bus_watch_name_on_connection) __wrap_g_bus_watch_name_on_connection;
decltype(g_bus_unwatch_name) __real_g_bus_unwatch_name;
decltype(g_bus_unwatch_name) __wrap_g_bus_unwatch_name;
decltype(g_dbus_proxy_new_sync) __real_g_dbus_proxy_new_sync;
decltype(g_dbus_proxy_new_sync) __wrap_g_dbus_proxy_new_sync;
decltype(g_dbus_connection_call_sync) __real_g_dbus_connection_call_sync;
decltype(g_dbus_connection_call_sync) __wrap_g_dbus_connection_call_sync;

guint __wrap_g_dbus_connection_signal_subscribe(GDBusConnection* connection, const gchar* sender,
                                                const gchar* interface, const gchar* member,
                                                const gchar* path, const gchar* firstArgument,
                                                GDBusSignalFlags flags,
                                                GDBusSignalCallback callback, gpointer data,
                                                GDestroyNotify release) {
    const guint id = __real_g_dbus_connection_signal_subscribe(
        connection, sender, interface, member, path, firstArgument, flags, callback, data, release);
    if (IsRecorded(connection)) {
        Subjects()[id] = Text(sender) + " " + Text(interface) + " " + Text(member) + " " +
                         Text(path) + " " + Text(firstArgument);
        Record("subscribe " + Subjects()[id] + ", flags " + std::to_string(flags));
    }
    return id;
}

void __wrap_g_dbus_connection_signal_unsubscribe(GDBusConnection* connection, guint id) {
    if (IsRecorded(connection)) {
        Record("unsubscribe " + Subjects()[id]);
    }
    __real_g_dbus_connection_signal_unsubscribe(connection, id);
}

guint __wrap_g_bus_watch_name_on_connection(GDBusConnection* connection, const gchar* name,
                                            GBusNameWatcherFlags flags,
                                            GBusNameAppearedCallback appeared,
                                            GBusNameVanishedCallback vanished, gpointer data,
                                            GDestroyNotify release) {
    Record("watch " + Text(name) + ", flags " + std::to_string(flags));
    if (TheBusCalls().watchFails) {
        return 0;
    }
    const guint id = WATCH_OFFSET + __real_g_bus_watch_name_on_connection(
                                        connection, name, flags, appeared, vanished, data, release);
    Subjects()[id] = Text(name);
    return id;
}

void __wrap_g_bus_unwatch_name(guint id) {
    Record("unwatch " + Subjects()[id]);
    __real_g_bus_unwatch_name(id > WATCH_OFFSET ? id - WATCH_OFFSET : id);
}

GDBusProxy* __wrap_g_dbus_proxy_new_sync(GDBusConnection* connection, GDBusProxyFlags flags,
                                         GDBusInterfaceInfo* info, const gchar* name,
                                         const gchar* path, const gchar* interface,
                                         GCancellable* cancellable, GError** error) {
    Record("proxy " + Text(name) + " " + Text(path) + " " + Text(interface) + ", flags " +
           std::to_string(flags));
    if (TheBusCalls().proxyFails) {
        g_set_error_literal(error, G_IO_ERROR, G_IO_ERROR_FAILED, "no proxy today");
        return nullptr;
    }
    GDBusProxy* proxy = __real_g_dbus_proxy_new_sync(connection, flags, info, name, path, interface,
                                                     cancellable, error);
    if (proxy != nullptr) {
        g_object_weak_ref(G_OBJECT(proxy), RecordRelease, nullptr);
    }
    return proxy;
}

GVariant* __wrap_g_dbus_connection_call_sync(GDBusConnection* connection, const gchar* destination,
                                             const gchar* path, const gchar* interface,
                                             const gchar* method, GVariant* parameters,
                                             const GVariantType* replyType, GDBusCallFlags flags,
                                             gint timeout, GCancellable* cancellable,
                                             GError** error) {
    if (IsRecorded(connection)) {
        Record("call " + Describe(destination, path, interface, method, parameters, replyType) +
               ", flags " + std::to_string(flags) + ", timeout " + std::to_string(timeout));
        const auto& answers = TheBusCalls().answers;
        if (const auto answer = answers.find(method); answer != answers.end()) {
            return g_variant_ref_sink(g_variant_new("(u)", answer->second));
        }
    }
    return __real_g_dbus_connection_call_sync(connection, destination, path, interface, method,
                                              parameters, replyType, flags, timeout, cancellable,
                                              error);
}
}
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
