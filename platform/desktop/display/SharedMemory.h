// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace applist::desktop {

/// The toolkit takes new memory to share with an X server for each frame, and gives it back: that
/// costs a key's frame, two rows, more than sending the pixels through the connection. What is
/// taken when the program is killed is never given back, too, and the kernel counts it. This
/// program therefore puts a function of its own in the place of XShmQueryExtension(); from this
/// call on, no display has shared memory. Call it before the toolkit starts.
void DrawWithoutSharedMemory();

}  // namespace applist::desktop
