// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "fakes/FakeAppControl.h"

#include <gtest/gtest.h>

#include "fakes/FakePlatformLog.h"

struct app_control_s {};

namespace applist::test {
namespace {

// The only request. Callers use nothing but its address.
app_control_s theRequest;

int Record(app_control_h request, const std::string& call, int result = APP_CONTROL_ERROR_NONE) {
    EXPECT_EQ(request, &theRequest) << call;
    EXPECT_EQ(TheAppControl().alive, 1) << call;
    Note(call);
    return result;
}

int Create(app_control_h* request) {
    FakeAppControl& launcher = TheAppControl();
    Note("create");
    if (launcher.createResult == APP_CONTROL_ERROR_NONE) {
        *request = &theRequest;
        ++launcher.alive;
        launcher.appId.clear();
    }
    return launcher.createResult;
}

int Send() {
    return TheAppControl().appId.empty() ? -1 : TheAppControl().sendResult;
}

}  // namespace

FakeAppControl& TheAppControl() {
    static FakeAppControl launcher;
    return launcher;
}

}  // namespace applist::test

using applist::test::Record;
using applist::test::TheAppControl;

extern "C" int app_control_create(app_control_h* request) {
    return applist::test::Create(request);
}

extern "C" int app_control_set_app_id(app_control_h request, const char* id) {
    TheAppControl().appId = id;
    return Record(request, std::string("app id ") + id);
}

extern "C" int app_control_add_extra_data(app_control_h request, const char* key,
                                          const char* value) {
    return Record(request, std::string("add ") + key + "=" + value);
}

extern "C" int app_control_send_launch_request(app_control_h request, app_control_reply_cb reply,
                                               void* /*user_data*/) {
    return Record(request, reply == nullptr ? "send" : "send with reply", applist::test::Send());
}

extern "C" int app_control_destroy(app_control_h request) {
    if (request == nullptr) {
        return -1;
    }
    const int result = Record(request, "destroy");
    --TheAppControl().alive;
    return result;
}
