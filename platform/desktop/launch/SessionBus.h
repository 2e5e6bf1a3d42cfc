// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace applist::desktop {

/// Returns true if the environment names a session bus or a bus socket exists at the default path.
/// Call this before GIO connects: without a session bus, GIO starts one, and that process would
/// outlive the program. Any thread.
bool HasSessionBus();

}  // namespace applist::desktop
