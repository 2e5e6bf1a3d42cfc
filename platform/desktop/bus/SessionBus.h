// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace applist::desktop {

/// True iff the environment names a session bus or one listens at its usual place. Ask before GIO
/// does: where there is none, GIO starts one, and that would outlive the program. Any thread.
bool HasSessionBus();

}  // namespace applist::desktop
