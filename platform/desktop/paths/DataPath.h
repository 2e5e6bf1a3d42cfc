// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace applist::desktop {

/// The absolute path of one of the program's data files or folders, named relative to share/.
/// Looks in ../share beside the program first, so that a build tree and a moved installation find
/// their own, then under the prefix of the installation. Empty when it is in neither. Any thread.
std::string FindData(const std::string& relative);

}  // namespace applist::desktop
