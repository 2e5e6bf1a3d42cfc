// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "AppControlRequest.h"

namespace applist::desktop {

/// How a request fared on the session bus.
enum class BusLaunch {
    /// The application runs and the bus has put the request into its queue.
    DELIVERED,
    /// There is no session bus, it knows no application of that id, or it does not answer within a
    /// second: launch the program directly.
    UNKNOWN,
    /// The bus knows the application, but could not start it or deliver the request; logged.
    FAILED
};

/// Has the session bus start the application, unless it runs, and passes it the request. Waits for
/// the application to take its name, not for it to handle the request. Main thread.
/// REQUIRES: request.appId is a valid application id.
BusLaunch LaunchOverBus(const app_control_s& request);

}  // namespace applist::desktop
