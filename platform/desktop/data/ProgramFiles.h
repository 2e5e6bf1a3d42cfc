// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace applist::desktop {

/// Returns the absolute path of one of the program's data files or folders, given relative to
/// share/. First looks in ../share next to the program's folder, so that a build tree and a
/// relocated installation use their own files; then under the installation prefix. Returns an empty
/// string if both lack it. Any thread.
std::string FindData(const std::string& relative);

}  // namespace applist::desktop
