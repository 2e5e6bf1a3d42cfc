// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

/// Where the set's data lives: under $APPLIST_PLATFORM_ROOT when that is set and not empty, else
/// in the user's own folders. docs/settings.md lists the files. Any thread.
namespace applist::desktop {

/// Settings that outlive a reboot.
std::string PersistentSettingsPath();
/// Settings that do not.
std::string VolatileSettingsPath();
/// What the factory wrote into the set.
std::string FactoryDataPath();
/// Which keys the set's remote control and keyboards have; for ReadKeyTable().
std::string KeyTablePath();

}  // namespace applist::desktop
