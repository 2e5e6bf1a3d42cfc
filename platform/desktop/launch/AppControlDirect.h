// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "launch/AppControlRequest.h"

namespace applist::desktop {

/// Starts the program of an installed application, with the request's extra data as arguments, and
/// without a shell. The desktop entry names the program; an entry in this program's own share
/// folder takes precedence over the system's. Returns true if the program was started; otherwise
/// logs the reason. Main thread. REQUIRES: request.appId is a valid application id.
bool LaunchDirectly(const app_control_s& request);

}  // namespace applist::desktop
