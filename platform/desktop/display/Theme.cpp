// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "display/Theme.h"

#include <Edje.h>
#include <Elementary.h>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <unistd.h>
#include <utility>

#include "Log.h"
#include "data/FilePaths.h"
#include "data/SettingsStore.h"

namespace applist::desktop {
namespace {

constexpr const char* SUFFIX = ".edj";
constexpr const char* STILL_SUFFIX = "-still.edj";

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
    // An overlay, because an extension would leave the toolkit's own popup style in place.
    elm_theme_overlay_add(nullptr, theme.c_str());
    // Without friction the list scrolls at once. Read only once, because a theme without motion
    // changes the value.
    static const double friction = elm_config_scroll_bring_in_scroll_friction_get();
    elm_config_scroll_bring_in_scroll_friction_set(theme.ends_with(STILL_SUFFIX) ? 0.0 : friction);
    // The toolkit accepts a default theme, which this one replaces, only with this item.
    char* version = edje_file_data_get(theme.c_str(), "version");
    if (version == nullptr) {
        LOG_ERROR("The toolkit rejects the theme %s: it does not have the data item \"version\"",
                  theme.c_str());
    }
    std::free(version);
}

ThemeSwitch::ThemeSwitch(std::string theme, std::function<void()> switched)
    : m_theme(std::move(theme)), m_switched(std::move(switched)) {}

void ThemeSwitch::Update() {
    const std::string theme = FindTheme();
    // A change of another setting must not load the same theme again.
    if (theme.empty() || theme == m_theme) {
        return;
    }
    // The toolkit keeps overlays in a list, so the previous one must be removed.
    elm_theme_overlay_del(nullptr, m_theme.c_str());
    m_theme = theme;
    LoadTheme(theme);
    m_switched();
}

}  // namespace applist::desktop
