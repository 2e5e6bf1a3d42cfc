// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace applist::desktop {

/// True iff the environment names a session bus or has one in its usual place. Ask before GLib is
/// asked: where there is none, that starts one, which outlives the program. Any thread.
bool HasSessionBus();

}  // namespace applist::desktop
