// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <csignal>
#include <cstdio>
#include <exception>
#include <optional>

#include "AppListEntry.h"
#include "BannerEntry.h"
#include "Log.h"
#include "app.h"
#include "visibility-checker.h"

namespace {

// The version string that log readers search for. The package has its own version number.
constexpr const char* VERSION = "plm-applist-20150201.1";
constexpr const char* APP_ID = "org.vantu.applist";

// The status for an unexpected error, like ui_app_main()'s.
constexpr int FAILED = -5;

}  // namespace

int main(int argc, char** argv) try {
    // A closed pipe on standard output must not end the program.
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
    std::printf("APPLIST v: %s\n", VERSION);
    // Standard output is buffered if it is a pipe; flush it so that the line appears at the start.
    static_cast<void>(std::fflush(stdout));
    // Where data services are not offered, only a popup says why.
    ui_app_callbacks callbacks{BannerCreate, BannerTerminate, BannerPause, BannerResume,
                               BannerService};
    std::optional<AppListEntry> entry;
    if (CheckVisibility()) {
        LOG_DEBUG("CheckVisibility returned true. Showing application");
        entry.emplace(APP_ID);
        callbacks = {AppListEntry::Create, AppListEntry::Terminate, AppListEntry::Pause,
                     AppListEntry::Resume, AppListEntry::Service};
        LOG_DEBUG("start efl main");
    } else {
        LOG_DEBUG("Application can not be shown due to CheckVisibility returning false");
    }
    const int result = ui_app_main(argc, argv, &callbacks, entry ? &*entry : nullptr);
    if (result != 0) {
        LOG_ERROR("app_main() is failed. err = %d", result);
    }
    LOG_DEBUG("end efl main");
    return result;
} catch (const std::exception& error) {
    LOG_ERROR("Aborted: %s", error.what());
    return FAILED;
}
