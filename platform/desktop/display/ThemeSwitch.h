// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>

namespace applist::desktop {

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
