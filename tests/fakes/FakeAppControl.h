// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "app_control.h"

/// Records launch requests. Linking it provides the functions of app_control.h.
///
/// Each call is noted in the history of FakePlatformLog with its arguments: "create",
/// "add text=Hello", "app id org.vantu.x", "send", "send with reply", "destroy". A call with a
/// handle other than the created one fails the running test.
namespace applist::test {

struct FakeAppControl {
    /// The results of app_control_create() and app_control_send_launch_request().
    int createResult = APP_CONTROL_ERROR_NONE;
    int sendResult = APP_CONTROL_ERROR_NONE;
    /// Requests created and not yet destroyed.
    int alive = 0;
    /// The application id of the request; without it the request cannot be sent.
    std::string appId;
};

/// The one launcher of the process; tests assign FakeAppControl{} to reset it.
FakeAppControl& TheAppControl();

}  // namespace applist::test
