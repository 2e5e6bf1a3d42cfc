// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Evas.h>

namespace applist::desktop {

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
