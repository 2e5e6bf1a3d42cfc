// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "launch/AppControlRequest.h"

namespace applist::desktop {

/// The result of a launch over the session bus.
enum class BusLaunch {
    /// The application is running and the bus has queued the request for it.
    DELIVERED,
    /// The session bus is missing, the bus does not know the application id, or the bus did not
    /// reply within a second. The caller should launch the program directly.
    UNKNOWN,
    /// The bus knows the application but could not start it or deliver the request; logged.
    FAILED
};

/// Sends a request over the session bus, which starts the application if it is not running. Waits
/// until the application has taken its bus name, but not until it has handled the request. Main
/// thread. REQUIRES: request.appId is a valid application id.
BusLaunch LaunchOverBus(const app_control_s& request);

}  // namespace applist::desktop
