// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "data/SettingsPaths.h"

#include <cstdlib>
#include <glib.h>

namespace applist::desktop {
namespace {

std::string PathOf(const char* underRoot, const char* userFolder, const char* underUserFolder) {
    const char* root = std::getenv("APPLIST_PLATFORM_ROOT");
    // An empty variable counts as unset; otherwise the paths would start at the file system's root.
    if (root != nullptr && *root != '\0') {
        return std::string(root) + "/" + underRoot;
    }
    return std::string(userFolder) + "/applist/" + underUserFolder;
}

}  // namespace

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
