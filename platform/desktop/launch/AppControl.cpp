// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cerrno>
#include <chrono>
#include <new>
#include <string>
#include <vector>

#include <gio/gdesktopappinfo.h>
#include <gio/gio.h>

#include "CallbackGuard.h"
#include "Log.h"
#include "app_control.h"
#include "data/FilePaths.h"
#include "launch/LaunchProtocol.h"
#include "launch/SessionBus.h"

namespace applist::desktop {
namespace {

// The result of a launch over the session bus.
enum class BusLaunch {
    // The application is running and the bus has queued the request for it.
    DELIVERED,
    // The session bus is missing, the bus does not know the application id, or the bus did not
    // reply within a second. The caller should launch the program directly.
    UNKNOWN,
    // The bus knows the application but could not start it or deliver the request; logged.
    FAILED
};

// Limit for each reply of the bus, because the viewer may be waiting for the caller.
constexpr int REPLY_TIMEOUT_MS = 1000;
constexpr const char* BUS_NAME = "org.freedesktop.DBus";
constexpr const char* BUS_PATH = "/org/freedesktop/DBus";

// Opens a private connection. The process' shared connection ends the process when the bus closes
// it. Returns null if the bus does not answer within the limit.
GDBusConnection* Connect() {
    if (!HasSessionBus()) {
        return nullptr;
    }
    const Deadline deadline{std::chrono::milliseconds(REPLY_TIMEOUT_MS)};
    g_autoptr(GError) error = nullptr;
    g_autofree char* address =
        g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SESSION, deadline.cancellable(), &error);
    GDBusConnection* bus = nullptr;
    if (address != nullptr) {
        constexpr auto flags =
            static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                              G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
        bus = g_dbus_connection_new_for_address_sync(address, flags, nullptr,
                                                     deadline.cancellable(), &error);
    }
    if (bus == nullptr) {
        LOG_ERROR("No session bus to launch over: [%d] %s", error->code, error->message);
    }
    return bus;
}

// Calls a method of the bus daemon and discards the content of the reply.
bool AskDaemon(GDBusConnection* bus, const char* interface, const char* method,
               GVariant* parameters, GError** error) {
    g_autoptr(GVariant) answer =
        g_dbus_connection_call_sync(bus, BUS_NAME, BUS_PATH, interface, method, parameters, nullptr,
                                    G_DBUS_CALL_FLAGS_NONE, REPLY_TIMEOUT_MS, nullptr, error);
    return answer != nullptr;
}

// Logs the failure of a bus call. After a timeout it returns UNKNOWN, so that the caller launches
// the program directly: the daemon drops the pending request when this connection closes. If the
// bus starts the program as well, the second instance forwards its request to the first.
BusLaunch Failed(const char* what, const std::string& appId, const GError* error) {
    if (g_error_matches(error, G_IO_ERROR, G_IO_ERROR_TIMED_OUT) != FALSE) {
        LOG_INFO("Timed out: %s %s over the bus", what, appId.c_str());
        return BusLaunch::UNKNOWN;
    }
    LOG_ERROR("Cannot %s %s over the bus: [%d] %s", what, appId.c_str(), error->code,
              error->message);
    return BusLaunch::FAILED;
}

// The start and the request are separate calls. The daemon drops a request that waits for a start
// if its sender disconnects, and the caller may exit right after the launch.
BusLaunch Start(GDBusConnection* bus, const std::string& appId) {
    g_autoptr(GError) error = nullptr;
    if (AskDaemon(bus, BUS_NAME, "StartServiceByName", g_variant_new("(su)", appId.c_str(), 0U),
                  &error)) {
        return BusLaunch::DELIVERED;
    }
    if (g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_SERVICE_UNKNOWN) != FALSE) {
        return BusLaunch::UNKNOWN;
    }
    return Failed("start", appId, error);
}

// The daemon handles the messages of a connection in order. Its reply to the Ping therefore proves
// that the request is in the application's queue.
BusLaunch Deliver(GDBusConnection* bus, const app_control_s& request) {
    g_autoptr(GError) error = nullptr;
    g_autoptr(GDBusMessage) message = ToMessage(request);
    if (g_dbus_connection_send_message(bus, message, G_DBUS_SEND_MESSAGE_FLAGS_NONE, nullptr,
                                       &error) != FALSE &&
        AskDaemon(bus, "org.freedesktop.DBus.Peer", "Ping", nullptr, &error)) {
        return BusLaunch::DELIVERED;
    }
    return Failed("reach", request.appId, error);
}

// Sends a request over the session bus, which starts the application if it is not running. Waits
// until the application has taken its bus name, but not until it has handled the request. Main
// thread. REQUIRES: request.appId is a valid application id.
BusLaunch LaunchOverBus(const app_control_s& request) {
    g_autoptr(GDBusConnection) bus = Connect();
    if (bus == nullptr) {
        return BusLaunch::UNKNOWN;
    }
    const BusLaunch started = Start(bus, request.appId);
    return started == BusLaunch::DELIVERED ? Deliver(bus, request) : started;
}

using Command = std::vector<std::string>;

// Desktop entries use field codes such as "%U" as placeholders for files to open.
bool IsFieldCode(const std::string& word) {
    return word.size() == 2 && word[0] == '%' && word[1] != '%';
}

// Splits a desktop entry's command line, which may contain quotes, and drops the field codes. Empty
// if the command line is missing or malformed.
Command Words(const char* commandLine) {
    g_auto(GStrv) words = nullptr;
    if (commandLine == nullptr || g_shell_parse_argv(commandLine, nullptr, &words, nullptr) == 0) {
        return {};
    }
    Command command(words, words + g_strv_length(words));
    std::erase_if(command, IsFieldCode);
    return command;
}

// Returns the command of the application's desktop entry. Empty if there is no such entry or its
// program does not exist.
Command CommandOf(const std::string& appId) {
    const std::string entry = appId + ".desktop";
    const std::string ours = FindData("applications/" + entry);
    g_autoptr(GDesktopAppInfo) info = ours.empty()
                                          ? g_desktop_app_info_new(entry.c_str())
                                          : g_desktop_app_info_new_from_filename(ours.c_str());
    return info != nullptr ? Words(g_app_info_get_commandline(G_APP_INFO(info))) : Command();
}

// Starts the program of an installed application, with the request's extra data as arguments, and
// without a shell. The desktop entry names the program; an entry in this program's own share
// folder takes precedence over the system's. Returns true if the program was started; otherwise
// logs the reason. Main thread. REQUIRES: request.appId is a valid application id.
bool LaunchDirectly(const app_control_s& request) {
    Command command = CommandOf(request.appId);
    if (command.empty()) {
        LOG_ERROR("Cannot launch %s: no such application is installed", request.appId.c_str());
        return false;
    }
    const Command extra = ToArguments(request);
    command.insert(command.end(), extra.begin(), extra.end());
    std::vector<char*> argv;
    argv.reserve(command.size() + 1);
    for (std::string& argument : command) {
        argv.push_back(argument.data());
    }
    argv.push_back(nullptr);
    g_autoptr(GError) error = nullptr;
    if (g_spawn_async(nullptr, argv.data(), nullptr, G_SPAWN_SEARCH_PATH, nullptr, nullptr, nullptr,
                      &error) == FALSE) {
        LOG_ERROR("Cannot start %s: [%d] %s", argv[0], error->code, error->message);
        return false;
    }
    return true;
}

// D-Bus strings must be valid UTF-8.
bool IsText(const char* text) {
    return text != nullptr && g_utf8_validate(text, -1, nullptr) != FALSE;
}

// Replaces an earlier value, because the data is sent as a D-Bus dictionary, whose keys are unique.
int AddExtraData(app_control_s& request, const char* key, const char* value) {
    const auto known = std::find_if(request.extraData.begin(), request.extraData.end(),
                                    [key](const auto& pair) { return pair.first == key; });
    if (known != request.extraData.end()) {
        known->second = value;
    } else {
        request.extraData.emplace_back(key, value);
    }
    return APP_CONTROL_ERROR_NONE;
}

int Launch(const app_control_s& request) {
    // The id is also the bus name, so an invalid one cannot be put into a message.
    if (g_application_id_is_valid(request.appId.c_str()) == FALSE) {
        LOG_ERROR("Cannot launch '%s': not an application id", request.appId.c_str());
        return -EINVAL;
    }
    const BusLaunch launch = LaunchOverBus(request);
    if (launch == BusLaunch::UNKNOWN) {
        return LaunchDirectly(request) ? APP_CONTROL_ERROR_NONE : -ENOENT;
    }
    return launch == BusLaunch::DELIVERED ? APP_CONTROL_ERROR_NONE : -EIO;
}

}  // namespace
}  // namespace applist::desktop

using applist::GuardCallback;
using applist::desktop::AddExtraData;
using applist::desktop::IsText;
using applist::desktop::Launch;

extern "C" int app_control_create(app_control_h* request) {
    if (request == nullptr) {
        return -EINVAL;
    }
    // An exception must not leave a C function.
    auto* created = new (std::nothrow) app_control_s;
    if (created == nullptr) {
        return -ENOMEM;
    }
    *request = created;
    return APP_CONTROL_ERROR_NONE;
}

extern "C" int app_control_set_app_id(app_control_h request, const char* id) {
    if (request == nullptr || !IsText(id)) {
        return -EINVAL;
    }
    return GuardCallback<int>(-ENOMEM, [&] {
        request->appId = id;
        return APP_CONTROL_ERROR_NONE;
    });
}

extern "C" int app_control_add_extra_data(app_control_h request, const char* key,
                                          const char* value) {
    if (request == nullptr || !IsText(key) || !IsText(value)) {
        return -EINVAL;
    }
    return GuardCallback<int>(-ENOMEM, [&] { return AddExtraData(*request, key, value); });
}

// The reply only reports that the launch was accepted: desktop applications do not return a reply.
extern "C" int app_control_send_launch_request(app_control_h request, app_control_reply_cb reply,
                                               void* user_data) {
    if (request == nullptr) {
        return -EINVAL;
    }
    const int result = GuardCallback<int>(-ENOMEM, [&] { return Launch(*request); });
    if (result == APP_CONTROL_ERROR_NONE && reply != nullptr) {
        // The reply is only valid during the callback, so the stack can own it.
        app_control_s empty;
        reply(request, &empty, result, user_data);
    }
    return result;
}

extern "C" int app_control_destroy(app_control_h request) {
    if (request == nullptr) {
        return -EINVAL;
    }
    delete request;
    return APP_CONTROL_ERROR_NONE;
}
