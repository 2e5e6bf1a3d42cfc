// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "visibility-checker.h"

#include <string_view>

#include "Log.h"
#include "PlatformSettings.h"

namespace {

constexpr std::string_view MENU_KEY = "menu/system/application-list";

}  // namespace

bool CheckVisibility() {
    bool result = false;
    const int localSet = PlatformSettings::GetLocalSet();
    LOG_DEBUG("Localset is: %d", localSet);
    switch (localSet) {
        case LOCAL_NONE_OF:
            LOG_DEBUG("Data Service Item is not visible due to Localset LOCAL_NONE_OF");
            break;
        case LOCAL_ITALY:
            LOG_DEBUG("Checking Data Service Item visibility for Localset LOCAL_ITALY");
            result = CheckDVBVisibility();
            break;
        // These three receive ISDB-T, where the auto-run setting does not apply.
        case LOCAL_BRAZIL:
        case LOCAL_ARGENTINA:
        case LOCAL_URUGUAY:
            LOG_DEBUG(
                "Checking Data Service Item visibility for Localset "
                "LOCAL_BRAZIL/LOCAL_ARGENTINA/LOCAL_URUGUAY");
            result = CheckISDBVisibility();
            break;
        default:
            LOG_DEBUG("Data Service Item is not visible due to unknown Localset");
            break;
    }
    LOG_DEBUG("CheckVisibility resulting in :%d", result);
    return result;
}

bool CheckDVBVisibility() {
    LOG_DEBUG("CheckDVBVisibility function start");
    // Read all three even if the first one decides, so that the log shows the complete state.
    const bool dataServiceExists =
        (PlatformSettings::GetDataServiceFlag() & DATA_SERVICE_EXISTS) != 0;
    const bool autorunOn = PlatformSettings::IsAutorunDataService();
    const bool autostartXlet = PlatformSettings::IsAutostartApp();
    LOG_DEBUG("From vconf: dataServcieExists=%d, autorunOn=%d, autostartXlet=%d", dataServiceExists,
              autorunOn, autostartXlet);
    // Data services that start by themselves leave nothing to choose; the popup says so.
    const bool result = dataServiceExists && !(autorunOn && autostartXlet);
    LOG_DEBUG("CheckDVBVisibility function end");
    return result;
}

bool CheckISDBVisibility() {
    LOG_DEBUG("CheckISDBVisibility function start");
    LOG_DEBUG("Checking Data Service Availability");
    const int flag = PlatformSettings::GetDataServiceFlag();
    LOG_DEBUG("CheckISDBVisibility function end");
    return (flag & DATA_SERVICE_ISDB_MASK) != 0;
}

int check_visibility_int(const char* key) {
    LOG_DEBUG("check_visibility_int called with Key: %s", key != nullptr ? key : "(null)");
    if (key != nullptr && key == MENU_KEY) {
        return CheckVisibility() ? 1 : 0;
    }
    // The menu may ask for any of its entries. Only the list's own one is decided here.
    LOG_DEBUG("Item will not be shown");
    return 0;
}

// The menu calls the function that matches a setting's type. Only the integer setting can be
// hidden.
int check_visibility_bool(const char* /*key*/) {
    return 1;
}

int check_visibility_double(const char* /*key*/) {
    return 1;
}

int check_visibility_string(const char* /*key*/) {
    return 1;
}
