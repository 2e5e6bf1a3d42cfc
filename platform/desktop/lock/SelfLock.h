// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Evas.h>

namespace applist::desktop {

/// Makes the process give up its rights after the first frame of this window: to start programs,
/// to write files, to connect to other processes and to read files that the list does not need.
/// docs/security.md lists what remains. Where the kernel does not offer a part of this, the rest is
/// done; an info line says what.
///
/// Does nothing if the environment variable APPLIST_LOCK is "off", or if the process has locked
/// itself already. Main thread only.
void LockAfterFirstFrame(Evas_Object* window);

}  // namespace applist::desktop
