// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cerrno>
#include <new>

#include <gio/gio.h>

#include "CallbackGuard.h"
#include "Log.h"
#include "app_control.h"
#include "launch/AppControlBus.h"
#include "launch/AppControlDirect.h"
#include "launch/AppControlRequest.h"

namespace {

using applist::GuardCallback;
using applist::desktop::BusLaunch;

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
    const BusLaunch launch = applist::desktop::LaunchOverBus(request);
    if (launch == BusLaunch::UNKNOWN) {
        return applist::desktop::LaunchDirectly(request) ? APP_CONTROL_ERROR_NONE : -ENOENT;
    }
    return launch == BusLaunch::DELIVERED ? APP_CONTROL_ERROR_NONE : -EIO;
}

}  // namespace

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
