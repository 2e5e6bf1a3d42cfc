// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "BannerEntry.h"

#include <map>
#include <string>

#include "CallbackGuard.h"
#include "Log.h"
#include "PlatformSettings.h"
#include "app.h"
#include "app_control.h"
#include "i18n_text.h"

namespace {

constexpr const char* ALERT_POPUP_ID = "org.vantu.alert-syspopup";

/// The popup's extra data, sent in the order of the keys.
using ExtraData = std::map<std::string, std::string>;

// Checks both bits, although the DVB rule of the decision checks only the first one. If only the
// second bit is set, the auto-run text is shown.
const char* WhyNotInItaly() {
    return (PlatformSettings::GetDataServiceFlag() & DATA_SERVICE_ISDB_MASK) == 0
               ? i18n_get_text("SID_DATA_SERVICE_IS_NOT_PROVIDED")
               : i18n_get_text("TV_SID_NOT_AVAILABLE_AUTO_RUN_DATA_MSG");
}

ExtraData Explain(int localSet) {
    if (localSet == LOCAL_ITALY) {
        return {{"type", "notification"}, {"text", WhyNotInItaly()}};
    }
    return {{"type", "unavailable"}, {"text", i18n_get_text("SID_NOT_AVAILABLE")}};
}

void Send(const char* appId, const ExtraData& extraData) {
    app_control_h request = nullptr;
    if (app_control_create(&request) != APP_CONTROL_ERROR_NONE) {
        return;
    }
    for (const auto& [key, value] : extraData) {
        // The result is not checked: the popup refuses a request that lacks its text.
        app_control_add_extra_data(request, key.c_str(), value.c_str());
        LOG_DEBUG("Adding extra data: key=%s, value=%s", key.c_str(), value.c_str());
    }
    app_control_set_app_id(request, appId);
    // Without a reply callback, because this program ends before the popup does.
    const int result = app_control_send_launch_request(request, nullptr, nullptr);
    app_control_destroy(request);
    if (result != APP_CONTROL_ERROR_NONE) {
        LOG_ERROR("%s launching failed", appId);
    }
}

}  // namespace

bool BannerCreate(void* /*data*/) {
    const int localSet = PlatformSettings::GetLocalSet();
    LOG_DEBUG("Localset is: %d", localSet);
    applist::GuardCallback([localSet] { Send(ALERT_POPUP_ID, Explain(localSet)); });
    // Ends even if the launch has failed, because this program does not have a window of its own.
    LOG_DEBUG("Exiting EFL main loop.");
    ui_app_exit();
    return true;
}

// The popup is another program, so nothing is left to pause, resume or delete here.
void BannerTerminate(void* /*data*/) {}

void BannerPause(void* /*data*/) {}

void BannerResume(void* /*data*/) {}

void BannerService(app_control_s* /*request*/, void* /*data*/) {}
