// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdio>

#include "AppListEntry.h"
#include "BannerEntry.h"
#include "Log.h"
#include "app.h"
#include "visibility-checker.h"

namespace {

constexpr const char* VERSION = "plm-applist-20150201.1";
constexpr const char* APP_ID = "org.vantu.applist";

int RunMainLoop(int argc, char** argv, ui_app_callbacks& callbacks, void* data) {
    const int result = ui_app_main(argc, argv, &callbacks, data);
    if (result != 0) {
        LOG_ERROR("app_main() is failed. err = %d", result);
    }
    LOG_DEBUG("end efl main");
    return result;
}

int RunList(int argc, char** argv) {
    LOG_DEBUG("CheckVisibility returned true. Showing application");
    AppListEntry entry(APP_ID);
    ui_app_callbacks callbacks{AppListEntry::Create, AppListEntry::Terminate, AppListEntry::Pause,
                               AppListEntry::Resume, AppListEntry::Service};
    LOG_DEBUG("start efl main");
    return RunMainLoop(argc, argv, callbacks, &entry);
}

int RunBanner(int argc, char** argv) {
    LOG_DEBUG("Application can not be shown due to CheckVisibility returning false");
    ui_app_callbacks callbacks{BannerCreate, BannerTerminate, BannerPause, BannerResume,
                               BannerService};
    return RunMainLoop(argc, argv, callbacks, nullptr);
}

}  // namespace

int main(int argc, char** argv) {
    std::printf("APPLIST v: %s\n", VERSION);
    std::fflush(stdout);  // A reader at the other end of a pipe sees it at the start, not the end.
    return CheckVisibility() ? RunList(argc, argv) : RunBanner(argc, argv);
}
