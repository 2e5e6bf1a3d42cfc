// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

/// Paths of the set's data files: under $APPLIST_PLATFORM_ROOT if it is set and not empty, else in
/// the user's own folders. docs/settings.md lists the files. Any thread.
namespace applist::desktop {

/// Settings that persist across reboots ("db/").
std::string PersistentSettingsPath();
/// Settings that do not ("memory/").
std::string VolatileSettingsPath();
/// Factory items.
std::string FactoryDataPath();
/// Key names of the set's remote control and keyboards; for ReadKeyTable().
std::string KeyTablePath();

}  // namespace applist::desktop
