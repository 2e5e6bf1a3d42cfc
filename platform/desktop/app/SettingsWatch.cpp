// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "app/SettingsWatch.h"

#include <filesystem>
#include <system_error>
#include <utility>

#include "CallbackGuard.h"
#include "data/FilePaths.h"

namespace applist::desktop {
namespace {

// The toolkit reports every file in the folder.
void OnChange(void* watch, Ecore_File_Monitor*, Ecore_File_Event, const char* path) {
    GuardCallback([&] { static_cast<SettingsWatch*>(watch)->FileChanged(path); });
}

// Returns the folder of the settings, which exists afterwards unless it cannot be created. Until
// the viewer changes the first setting, it may be missing. Folders above it are not created,
// because a mistake in a variable of the environment would then go unnoticed.
std::string WatchedFolder() {
    const auto folder = std::filesystem::path(PersistentSettingsPath()).parent_path();
    std::error_code ignored;
    std::filesystem::create_directory(folder, ignored);
    return folder;
}

}  // namespace

// Writers replace the file, so the folder is watched.
SettingsWatch::SettingsWatch(std::function<void()> changed)
    : m_changed(std::move(changed)),
      m_monitor(ecore_file_monitor_add(WatchedFolder().c_str(), OnChange, this)) {}

SettingsWatch::~SettingsWatch() {
    if (m_monitor != nullptr) {
        ecore_file_monitor_del(m_monitor);
    }
}

void SettingsWatch::FileChanged(const std::string& path) const {
    if (path == PersistentSettingsPath()) {
        m_changed();
    }
}

}  // namespace applist::desktop
