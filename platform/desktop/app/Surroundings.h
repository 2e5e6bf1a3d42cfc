// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

namespace applist::desktop {

/// Returns what the start of the toolkit depends on, one sorted line each: the variables of the
/// environment that the toolkit and its libraries have read by then, the theme, the screen, and the
/// program's file. A process that has started the toolkit can become the application only as long
/// as they stay the same. Main thread only. REQUIRES: the toolkit is connected to an X server.
std::vector<std::string> ReadSurroundings();

}  // namespace applist::desktop
