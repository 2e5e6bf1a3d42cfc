// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// A client on the bus, for tests that start it as different users. Runs the commands in its
// arguments in order on one connection and prints a line with the bus' answer for each:
//
//   own NAME                            requests a name and releases it
//   call DESTINATION PATH INTERFACE MEMBER    calls; "-" is no interface; "Send" empties a list
//   signal DESTINATION PATH INTERFACE MEMBER  emits, to all when DESTINATION is "-"
//   listen RULE                         adds a match rule
//   receive                             answers calls and prints what arrives, until SIGTERM
//
// The first line is "connected" with the connection's unique name.
#include <chrono>
#include <csignal>
#include <functional>
#include <iostream>
#include <map>
#include <string>
#include <vector>

#include <gio/gio.h>
#include <glib-unix.h>

#include "support/GlibWait.h"
#include "support/ScriptedPeer.h"

namespace {

using Arguments = std::vector<std::string>;

GDBusConnection* bus = nullptr;

std::string OutcomeOf(GVariant* reply, GError* error) {
    if (reply != nullptr) {
        g_autofree char* text = g_variant_print(reply, FALSE);
        return text;
    }
    g_autofree char* name = g_dbus_error_get_remote_error(error);
    return name != nullptr ? name : error->message;
}

std::string AskDaemon(const char* method, GVariant* parameters) {
    g_autoptr(GError) error = nullptr;
    g_autoptr(GVariant) reply = g_dbus_connection_call_sync(
        bus, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", method,
        parameters, nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, &error);
    return OutcomeOf(reply, error);
}

const char* OrNull(const std::string& text) {
    return text == "-" ? nullptr : text.c_str();
}

// The call empties the list, so that a call that gets through has a visible effect.
GVariant* RemoveAllItems() {
    static constexpr char FRAME[]{'\xD3', '\x07', 0, 0};
    return applist::test::Payload(FRAME);
}

std::string Own(const Arguments& arguments) {
    const char* name = arguments[0].c_str();
    std::string outcome = AskDaemon("RequestName", g_variant_new("(su)", name, 4U));
    AskDaemon("ReleaseName", g_variant_new("(s)", name));
    return outcome;
}

// Built by hand because the bus library does not make calls without an interface.
std::string Call(const Arguments& arguments) {
    g_autoptr(GDBusMessage) call = g_dbus_message_new_method_call(
        arguments[0].c_str(), arguments[1].c_str(), OrNull(arguments[2]), arguments[3].c_str());
    if (arguments[3] == "Send") {
        g_dbus_message_set_body(call, RemoveAllItems());
    }
    g_autoptr(GError) error = nullptr;
    g_autoptr(GDBusMessage) reply = g_dbus_connection_send_message_with_reply_sync(
        bus, call, G_DBUS_SEND_MESSAGE_FLAGS_NONE, -1, nullptr, nullptr, &error);
    if (reply != nullptr && g_dbus_message_to_gerror(reply, &error) == FALSE) {
        return "answered";
    }
    return OutcomeOf(nullptr, error);
}

std::string Signal(const Arguments& arguments) {
    g_autoptr(GError) error = nullptr;
    g_dbus_connection_emit_signal(bus, OrNull(arguments[0]), arguments[1].c_str(),
                                  arguments[2].c_str(), arguments[3].c_str(), RemoveAllItems(),
                                  &error);
    // The bus handles messages in order: after its answer the signal has been routed.
    AskDaemon("GetId", nullptr);
    return error != nullptr ? error->message : "sent";
}

std::string Listen(const Arguments& arguments) {
    return AskDaemon("AddMatch", g_variant_new("(s)", arguments[0].c_str()));
}

// Runs on the library's thread before dispatching, so it sees every message that the bus let
// through.
GDBusMessage* OnMessage(GDBusConnection* connection, GDBusMessage* message, gboolean incoming,
                        void* /*unused*/) {
    const GDBusMessageType type = g_dbus_message_get_message_type(message);
    const char* path = g_dbus_message_get_path(message);
    if (incoming == FALSE || path == nullptr || g_str_has_prefix(path, "/org/freedesktop") != 0) {
        return message;
    }
    const char* interface = g_dbus_message_get_interface(message);
    std::cout << (type == G_DBUS_MESSAGE_TYPE_SIGNAL ? "signal " : "call ")
              << g_dbus_message_get_sender(message) << ' ' << path << ' '
              << (interface != nullptr ? interface : "-") << ' '
              << g_dbus_message_get_member(message) << std::endl;
    if (type == G_DBUS_MESSAGE_TYPE_METHOD_CALL) {
        g_autoptr(GDBusMessage) reply = g_dbus_message_new_method_reply(message);
        g_dbus_message_set_body(reply, g_variant_new_parsed("(@ay [],)"));
        g_dbus_connection_send_message(connection, reply, G_DBUS_SEND_MESSAGE_FLAGS_NONE, nullptr,
                                       nullptr);
    }
    g_object_unref(message);
    return nullptr;
}

gboolean OnTerminate(void* ended) {
    *static_cast<bool*>(ended) = true;
    return G_SOURCE_REMOVE;
}

std::string Receive(const Arguments& /*none*/) {
    bool ended = false;
    g_unix_signal_add(SIGTERM, OnTerminate, &ended);
    g_dbus_connection_add_filter(bus, OnMessage, nullptr, nullptr);
    std::cout << "receiving" << std::endl;
    const bool inTime = applist::test::RunUntil([&] { return ended; }, std::chrono::hours(1));
    // Messages that the bus accepted before this question arrive before its answer.
    AskDaemon("GetId", nullptr);
    return inTime ? "ended" : "not ended in time";
}

struct Command {
    size_t arguments;
    std::function<std::string(const Arguments&)> run;
};

const std::map<std::string, Command>& Commands() {
    static const std::map<std::string, Command> commands{{"own", {1, Own}},
                                                         {"call", {4, Call}},
                                                         {"signal", {4, Signal}},
                                                         {"listen", {1, Listen}},
                                                         {"receive", {0, Receive}}};
    return commands;
}

// Runs the first command and removes it; false if the command is unknown.
bool RunFirst(Arguments& left) {
    const auto command = Commands().find(left.front());
    if (command == Commands().end() || left.size() <= command->second.arguments) {
        std::cerr << "bus_actor: cannot do " << left.front() << std::endl;
        return false;
    }
    const auto end = left.begin() + 1 + static_cast<std::ptrdiff_t>(command->second.arguments);
    const Arguments arguments(left.begin() + 1, end);
    left.erase(left.begin(), end);
    const std::string outcome = command->second.run(arguments);
    std::cout << command->first;
    for (const std::string& argument : arguments) {
        std::cout << ' ' << argument;
    }
    std::cout << ": " << outcome << std::endl;
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    g_autoptr(GError) error = nullptr;
    bus = g_bus_get_sync(G_BUS_TYPE_SYSTEM, nullptr, &error);
    if (bus == nullptr) {
        std::cerr << "bus_actor: " << error->message << std::endl;
        return 1;
    }
    std::cout << "connected " << g_dbus_connection_get_unique_name(bus) << std::endl;
    Arguments left(argv + 1, argv + argc);
    while (!left.empty()) {
        if (!RunFirst(left)) {
            return 2;
        }
    }
    return 0;
}
