// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

/// Paths of files that the port reads. Any thread.
namespace applist::desktop {

/// Returns the absolute path of one of the program's data files or folders, given relative to
/// share/. First looks in ../share next to the program's folder, so that a build tree and a
/// relocated installation use their own files; then under the installation prefix. Returns an empty
/// string if both lack it.
std::string FindData(const std::string& relative);

// The set's data files are under $APPLIST_PLATFORM_ROOT if it is set and not empty, else in the
// user's own folders. docs/settings.md lists them.

/// Settings that persist across reboots ("db/").
std::string PersistentSettingsPath();
/// Settings that do not ("memory/").
std::string VolatileSettingsPath();
/// Factory items.
std::string FactoryDataPath();
/// Key names of the set's remote control and keyboards; for ReadKeyTable().
std::string KeyTablePath();

}  // namespace applist::desktop
