// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Ecore_File.h>
#include <functional>
#include <string>

namespace applist::desktop {

/// Loads another theme when the viewer changes a setting that selects it, while windows are open.
/// Watches the folder of the persistent settings, which must exist when the object is created;
/// otherwise a change takes effect at the next start. Main thread only, while the toolkit is
/// running.
class ThemeSwitch {
public:
    /// theme is the loaded one. switched is called after another one has been loaded.
    ThemeSwitch(std::string theme, std::function<void()> switched);
    ~ThemeSwitch();
    ThemeSwitch(const ThemeSwitch&) = delete;
    ThemeSwitch& operator=(const ThemeSwitch&) = delete;
    ThemeSwitch(ThemeSwitch&&) = delete;
    ThemeSwitch& operator=(ThemeSwitch&&) = delete;

    /// For the toolkit's callback: a file in the folder has changed.
    void FileChanged(const std::string& path);

private:
    std::string m_theme;
    std::function<void()> m_switched;
    Ecore_File_Monitor* m_monitor;
};

}  // namespace applist::desktop
