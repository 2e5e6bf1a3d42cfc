// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>

namespace applist::desktop {

/// The folder "share" beside the folder of the running program: where an installed tree, and the
/// build tree of the same shape, keep what belongs to the program. Empty when the program's place
/// cannot be read. Any thread.
std::filesystem::path DataFolder();

}  // namespace applist::desktop
