// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Ecore_File.h>
#include <functional>
#include <string>

namespace applist::desktop {

/// Calls a function when the file of the persistent settings changes. Watches its folder, and
/// creates it if it is missing; if that fails, a change takes effect at the next start. At most one
/// at a time, because the toolkit serves only one watch of a folder. Main thread only, while the
/// toolkit is running.
class SettingsWatch {
public:
    explicit SettingsWatch(std::function<void()> changed);
    ~SettingsWatch();
    SettingsWatch(const SettingsWatch&) = delete;
    SettingsWatch& operator=(const SettingsWatch&) = delete;
    SettingsWatch(SettingsWatch&&) = delete;
    SettingsWatch& operator=(SettingsWatch&&) = delete;

    /// For the toolkit's callback: a file in the folder has changed.
    void FileChanged(const std::string& path) const;

private:
    std::function<void()> m_changed;
    Ecore_File_Monitor* m_monitor;
};

}  // namespace applist::desktop
