// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "data/FilePaths.h"

#include <cstdlib>
#include <filesystem>
#include <glib.h>
#include <system_error>

namespace applist::desktop {
namespace {

// Without /proc the result is "share", relative to the working directory.
std::filesystem::path ShareBesideProgram() {
    std::error_code unreadable;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", unreadable);
    return program.parent_path().parent_path() / "share";
}

std::string PathOf(const char* underRoot, const char* userFolder, const char* underUserFolder) {
    const char* root = std::getenv("APPLIST_PLATFORM_ROOT");
    // An empty variable counts as unset; otherwise the paths would start at the file system's root.
    if (root != nullptr && *root != '\0') {
        return std::string(root) + "/" + underRoot;
    }
    return std::string(userFolder) + "/applist/" + underUserFolder;
}

}  // namespace

std::string FindData(const std::string& relative) {
    // canonical() fails for a file that does not exist.
    for (const auto& share : {ShareBesideProgram(), std::filesystem::path(INSTALLED_DATA_DIR)}) {
        std::error_code absent;
        const auto found = std::filesystem::canonical(share / relative, absent);
        if (!absent) {
            return found.string();
        }
    }
    return {};
}

std::string PersistentSettingsPath() {
    return PathOf("db/settings.ini", g_get_user_config_dir(), "settings.ini");
}

std::string VolatileSettingsPath() {
    return PathOf("memory/settings.ini", g_get_user_runtime_dir(), "settings.ini");
}

std::string FactoryDataPath() {
    return PathOf("factory.ini", g_get_user_data_dir(), "factory.ini");
}

std::string KeyTablePath() {
    return PathOf("keys.ini", g_get_user_data_dir(), "keys.ini");
}

}  // namespace applist::desktop
