// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Evas.h>

/// How the toolkit draws its frames. Main thread only.
namespace applist::desktop {

/// Changes where the toolkit keeps the pixels of its frames on X11. Call it before the toolkit
/// starts.
///
/// The pixels are sent through the X connection instead of shared memory. The toolkit allocates and
/// frees a shared-memory segment for each frame. For the two rows that a key changes, this takes
/// longer than sending the pixels. In addition, segments of a killed program are never freed. The
/// program therefore replaces XShmQueryExtension(), which reports from this call on that no display
/// supports shared memory.
///
/// The first frame, which covers the screen, is drawn into huge pages, because the kernel takes 3
/// ms to provide its 2,025 ordinary pages. The program therefore replaces XCreateImage().
void SetUpFrameMemory();

/// Limits the first frame that shows something in this object's window to the area of the visible
/// objects.
///
/// The toolkit would draw the whole new window, send 8 MB of mostly transparent pixels to the X
/// server and take 4 ms longer. The window's picture is the same, and later frames draw what has
/// changed, as always. Has no effect unless the window is shaped, as transparent windows are
/// without a compositor, and the toolkit draws with its software engine for X11. Call before the
/// first frame.
void LimitFirstFrame(const Evas_Object* object);

}  // namespace applist::desktop
