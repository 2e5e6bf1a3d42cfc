// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Alert popup of the desktop port: a separate program that other programs launch to show a message.

#include "CallbackGuard.h"
#include "alert-syspopup/AlertPopup.h"
#include "app.h"

namespace {

using applist::GuardCallback;
using applist::desktop::AlertPopup;

constexpr const char* APPLICATION_ID = "org.vantu.alert-syspopup";

AlertPopup& Popup(void* data) {
    return *static_cast<AlertPopup*>(data);
}

bool OnCreate(void* data) {
    return GuardCallback(false, [data] {
        Popup(data).Create();
        return true;
    });
}

void OnTerminate(void* data) {
    GuardCallback([data] { Popup(data).Terminate(); });
}

void OnVisibilityChange(void* /*data*/) {}

void OnLaunch(app_control_s* request, void* data) {
    GuardCallback([&] { Popup(data).Launch(*request); });
}

}  // namespace

int main(int argc, char** argv) {
    AlertPopup popup(APPLICATION_ID);
    ui_app_callbacks callbacks{OnCreate, OnTerminate, OnVisibilityChange, OnVisibilityChange,
                               OnLaunch};
    return ui_app_main(argc, argv, &callbacks, &popup);
}
