// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "theme/Theme.h"

#include <Elementary.h>
#include <cerrno>
#include <cstring>
#include <string>
#include <unistd.h>

#include "Log.h"
#include "data/SettingsStore.h"
#include "paths/ProgramFiles.h"

namespace applist::desktop {
namespace {

constexpr const char* STANDARD = "applist/theme/applist.edj";
constexpr const char* HIGH_CONTRAST = "applist/theme/applist-high-contrast.edj";

// Does not use vconf_get_bool(), because a missing setting is normal here and must not be logged.
bool WantsHighContrast() {
    const Reading<Setting> setting = ReadSetting(HIGH_CONTRAST_KEY);
    if (!setting.problem.empty()) {
        LOG_ERROR("%s", setting.problem.c_str());
    }
    return setting.value == Setting(true);
}

}  // namespace

void LoadTheme() {
    const char* name = WantsHighContrast() ? HIGH_CONTRAST : STANDARD;
    const std::string theme = FindData(name);
    // elm_theme_overlay_add() does not report a file that it cannot load; the list's rows would
    // silently lack their style.
    if (theme.empty()) {
        LOG_ERROR("Cannot find the theme share/%s", name);
        return;
    }
    if (access(theme.c_str(), R_OK) != 0) {
        LOG_ERROR("Cannot read the theme %s: %s", theme.c_str(), std::strerror(errno));
        return;
    }
    elm_theme_overlay_add(nullptr, theme.c_str());
}

}  // namespace applist::desktop
