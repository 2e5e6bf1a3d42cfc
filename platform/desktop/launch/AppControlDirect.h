// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "AppControlRequest.h"

namespace applist::desktop {

/// Starts the installed program of the application, with the request's extra data as arguments.
/// Its desktop entry names the program; ours beside this program goes before those of the system.
/// No shell takes part. Returns true iff the program was started; else the reason is logged.
/// Main thread. REQUIRES: request.appId is a valid application id.
bool LaunchDirectly(const app_control_s& request);

}  // namespace applist::desktop
