// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "theme/ThemeSwitch.h"

#include <Elementary.h>
#include <filesystem>
#include <utility>

#include "CallbackGuard.h"
#include "data/SettingsPaths.h"
#include "theme/Theme.h"

namespace applist::desktop {
namespace {

// The toolkit reports every file in the folder.
void OnChange(void* themeSwitch, Ecore_File_Monitor*, Ecore_File_Event, const char* path) {
    GuardCallback([&] { static_cast<ThemeSwitch*>(themeSwitch)->FileChanged(path); });
}

}  // namespace

// Writers replace the file, so the folder is watched.
ThemeSwitch::ThemeSwitch(std::string theme, std::function<void()> switched)
    : m_theme(std::move(theme)),
      m_switched(std::move(switched)),
      m_monitor(ecore_file_monitor_add(
          std::filesystem::path(PersistentSettingsPath()).parent_path().c_str(), OnChange, this)) {}

ThemeSwitch::~ThemeSwitch() {
    if (m_monitor != nullptr) {
        ecore_file_monitor_del(m_monitor);
    }
}

void ThemeSwitch::FileChanged(const std::string& path) {
    if (path != PersistentSettingsPath()) {
        return;
    }
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
