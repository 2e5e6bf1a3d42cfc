// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "AppControlRequest.h"

typedef struct _GVariant GVariant;

/// How a launch request travels between two programs of the desktop port. The sender is
/// app_control_send_launch_request(), the receiver ui_app_main().
///
/// With a session bus: an application's id is its bus name and the name of its desktop entry. The
/// sender has the bus start it, then calls org.freedesktop.Application on it:
///     ActivateAction("launch", [<a{ss} extra data>], {})
/// The extra data keeps the order in which it was added. Plain Activate is a request without extra
/// data, as menus of the desktop send it.
///
/// Without a session bus: the sender starts the program with one pair of arguments for each piece
/// of extra data: --extra KEY=VALUE.
namespace applist::desktop {

/// The action that carries a request, and the type of its one parameter.
inline constexpr const char* LAUNCH_ACTION = "launch";
inline constexpr const char* LAUNCH_ACTION_TYPE = "a{ss}";

/// The argument that stands before each KEY=VALUE.
inline constexpr const char* EXTRA_ARGUMENT = "--extra";

/// The argument with which the bus starts a program: its first request will come over the bus, so
/// the start itself is none. (GIO's own name for it.)
inline constexpr const char* SERVICE_ARGUMENT = "--gapplication-service";

/// The object path at which an application with this id is called: dots become slashes, and
/// hyphens, which a path cannot hold, underscores.
std::string ObjectPathOf(const std::string& appId);

/// A request's extra data as the action's parameter; floating, so the caller sinks it or hands it
/// to a function that does.
GVariant* ToActionParameter(const app_control_s& request);

/// The request that an action's parameter carries. A null parameter, or one of another type, is a
/// request without extra data. The parameter stays the caller's.
app_control_s FromActionParameter(const std::string& appId, GVariant* parameter);

/// A request's extra data as program arguments.
std::vector<std::string> ToArguments(const app_control_s& request);

/// The request that a program's arguments carry. Arguments that are not of this protocol are left
/// to others; an --extra without KEY=VALUE behind it carries nothing.
app_control_s FromArguments(const std::string& appId, int argc, const char* const* argv);

}  // namespace applist::desktop
