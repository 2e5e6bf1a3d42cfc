// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace applist::desktop {

/// The viewer's settings that select the theme.
struct Appearance {
    bool highContrast;
    /// In per cent.
    int32_t textSize;
    bool reducedMotion;
};

/// Reads the settings HIGH_CONTRAST_KEY, TEXT_SIZE_KEY and REDUCED_MOTION_KEY. An invalid or
/// unreadable setting is logged, and its default is used: false, 100, false.
Appearance ReadAppearance();

/// Returns the path of the theme relative to the folder share.
std::string ThemeFileOf(const Appearance& appearance);

/// Returns the absolute path of the theme for the current settings. Logs a theme that is missing or
/// unreadable; the result is empty then.
std::string FindTheme();

/// Loads the theme for the windows that are created from now on. Logs a theme that the toolkit
/// rejects as its default. Does nothing if the path is empty. Main thread only; call after
/// elm_init().
void LoadTheme(const std::string& theme);

/// Loads another theme when the viewer changes a setting that selects it, while windows are open.
/// Main thread only, while the toolkit is running.
class ThemeSwitch {
public:
    /// theme is the loaded one. switched is called after another one has been loaded.
    ThemeSwitch(std::string theme, std::function<void()> switched);

    /// Reads the settings again.
    void Update();

private:
    std::string m_theme;
    std::function<void()> m_switched;
};

}  // namespace applist::desktop
