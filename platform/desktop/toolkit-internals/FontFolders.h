// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

namespace applist::desktop {

/// Returns the folders in which the toolkit has found fonts, so far. Main thread only.
const std::vector<std::string>& FontFolders();

}  // namespace applist::desktop
