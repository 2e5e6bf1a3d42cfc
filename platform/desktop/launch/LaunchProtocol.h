// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

typedef struct _GDBusMessage GDBusMessage;
typedef struct _GVariant GVariant;

/// A launch request: the application to launch, and string values by key in the order in which they
/// were added. The platform's headers only declare this type.
struct app_control_s {
    std::string appId;
    std::vector<std::pair<std::string, std::string>> extraData;
};

/// The form of a launch request between two programs of the desktop port. Requests are sent by
/// app_control_send_launch_request() and received by ui_app_main().
///
/// With a session bus: an application's id is also its bus name and the name of its desktop entry.
/// The sender asks the bus to start it, then calls org.freedesktop.Application on it:
///     ActivateAction("launch", [<a{ss} extra data>], {})
/// The extra data keeps the order in which it was added. A plain Activate, which desktop menus
/// send, is a request without extra data.
///
/// Without a session bus: the sender starts the program with two arguments for each piece of extra
/// data: --extra KEY=VALUE.
namespace applist::desktop {

/// The action that carries a request, and the type of its only parameter.
inline constexpr const char* LAUNCH_ACTION = "launch";
inline constexpr const char* LAUNCH_ACTION_TYPE = "a{ss}";

/// The argument that precedes each KEY=VALUE.
inline constexpr const char* EXTRA_ARGUMENT = "--extra";

/// The argument that the bus passes when it starts a program (defined by GIO). Such a start is not
/// a request; the first request follows over the bus.
inline constexpr const char* SERVICE_ARGUMENT = "--gapplication-service";

/// Returns the application id of a program: "org.vantu." and the file name without its folder, so
/// "/usr/bin/applist" becomes "org.vantu.applist". A file name that is already a complete id is
/// returned unchanged. Returns an empty string if the result is not a valid id.
std::string ApplicationIdOf(std::string_view program);

/// Returns the object path of the application with this id. Dots become slashes; hyphens, which a
/// path must not contain, become underscores.
std::string ObjectPathOf(const std::string& appId);

/// Returns a request's extra data as the action's parameter. The result is floating: the caller
/// sinks it or passes it to a function that does.
GVariant* ToActionParameter(const app_control_s& request);

/// Returns the call that sends a request to the running application without asking for a reply. The
/// caller unrefs it.
GDBusMessage* ToMessage(const app_control_s& request);

/// Converts an action's parameter to a request. If parameter is null or of another type, the
/// request has no extra data. The caller keeps ownership of parameter.
app_control_s FromActionParameter(const std::string& appId, GVariant* parameter);

/// Returns a request's extra data as program arguments.
std::vector<std::string> ToArguments(const app_control_s& request);

/// Converts a program's arguments to a request. Ignores arguments that are not part of this
/// protocol, and an --extra that is not followed by KEY=VALUE.
app_control_s FromArguments(const std::string& appId, int argc, const char* const* argv);

}  // namespace applist::desktop
