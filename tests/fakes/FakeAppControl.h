// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "app_control.h"

/// Launch requests as a history. Linking it provides the functions of app_control.h.
namespace applist::test {

struct FakeAppControl {
    /// Every call, oldest first, with what it was given: "create", "add text=Hello",
    /// "app id org.vantu.x", "send", "send with reply", "destroy". A call with another handle than
    /// the created one fails the running test.
    std::vector<std::string> calls;
    /// What app_control_create() and app_control_send_launch_request() return.
    int createResult = APP_CONTROL_ERROR_NONE;
    int sendResult = APP_CONTROL_ERROR_NONE;
    /// Requests made and not ended.
    int alive = 0;
    /// The application that the request names; without one it cannot be sent.
    std::string appId;
};

/// The one launcher of the process; tests assign FakeAppControl{} to start afresh.
FakeAppControl& TheAppControl();

}  // namespace applist::test
