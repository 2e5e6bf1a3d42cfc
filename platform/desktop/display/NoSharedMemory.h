// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace applist::desktop {

/// Makes the toolkit send pixels through the X connection instead of shared memory. Call it before
/// the toolkit starts.
///
/// The toolkit allocates and frees a shared-memory segment for each frame. For the two rows that a
/// key changes, this takes longer than sending the pixels. In addition, segments of a killed
/// program are never freed. The program therefore replaces XShmQueryExtension(), which reports from
/// this call on that no display supports shared memory.
void DrawWithoutSharedMemory();

}  // namespace applist::desktop
