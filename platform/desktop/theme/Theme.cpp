// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "theme/Theme.h"

#include <Edje.h>
#include <Elementary.h>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <string_view>
#include <unistd.h>

#include "Log.h"
#include "data/SettingsStore.h"
#include "data/ViewerSettings.h"
#include "system/ProgramFiles.h"

namespace applist::desktop {
namespace {

constexpr const char* SUFFIX = ".edj";
constexpr const char* STILL_SUFFIX = "-still.edj";

// The end of the paths that the toolkit tries for its default theme: in the user's home and in its
// own folder. It compares the versions of both files.
constexpr std::string_view DEFAULT_THEME = "/themes/default.edj";

// Opened instead of the default theme; empty before ReplaceDefaultTheme(). Not destroyed, because
// the toolkit's threads may open files while the program ends.
std::string& Replacement() {
    static auto* const path = new std::string;
    return *path;
}

}  // namespace

Appearance ReadAppearance() {
    return {ReadFlag(HIGH_CONTRAST_KEY), ReadTextSize(), ReadFlag(REDUCED_MOTION_KEY)};
}

std::string ThemeFileOf(const Appearance& appearance) {
    std::string name = "applist/theme/applist";
    if (appearance.highContrast) {
        name += "-high-contrast";
    }
    if (appearance.textSize != LEAST_TEXT_SIZE) {
        name += "-" + std::to_string(appearance.textSize);
    }
    return name + (appearance.reducedMotion ? STILL_SUFFIX : SUFFIX);
}

std::string FindTheme() {
    const std::string name = ThemeFileOf(ReadAppearance());
    std::string theme = FindData(name);
    // The toolkit does not report a file that it cannot load; the list's rows would silently lack
    // their style.
    if (theme.empty()) {
        LOG_ERROR("Cannot find the theme share/%s", name.c_str());
    } else if (access(theme.c_str(), R_OK) != 0) {
        LOG_ERROR("Cannot read the theme %s: %s", theme.c_str(), std::strerror(errno));
        theme.clear();
    }
    return theme;
}

void LoadTheme(const std::string& theme) {
    if (theme.empty()) {
        return;
    }
    elm_theme_overlay_add(nullptr, theme.c_str());
    static const double friction = elm_config_scroll_bring_in_scroll_friction_get();
    elm_config_scroll_bring_in_scroll_friction_set(theme.ends_with(STILL_SUFFIX) ? 0.0 : friction);
    char* version = edje_file_data_get(theme.c_str(), "version");
    if (version == nullptr) {
        LOG_ERROR("The toolkit rejects the theme %s: it does not have the data item \"version\"",
                  theme.c_str());
    }
    std::free(version);
}

void ReplaceDefaultTheme(const std::string& theme) {
    Replacement() = theme;
}

}  // namespace applist::desktop

// Replaces the library's function, because the dynamic linker resolves symbols from the program
// first. The environment variable for the toolkit's folders is not used instead, because it would
// also move the toolkit's configuration.
extern "C" __attribute__((visibility("default"))) Eina_File* eina_file_open(const char* name,
                                                                            Eina_Bool shared) {
    static auto* const replaced =
        reinterpret_cast<decltype(&eina_file_open)>(dlsym(RTLD_NEXT, "eina_file_open"));
    const std::string& theme = applist::desktop::Replacement();
    const bool isDefault =
        !theme.empty() && std::string_view(name).ends_with(applist::desktop::DEFAULT_THEME);
    return replaced(isDefault ? theme.c_str() : name, shared);
}
