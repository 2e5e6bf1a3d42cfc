// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "display/ThemeSwitch.h"

#include <Elementary.h>
#include <utility>

#include "display/Theme.h"

namespace applist::desktop {

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
