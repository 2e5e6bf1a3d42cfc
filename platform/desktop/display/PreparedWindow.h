// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Evas.h>
#include <string>

namespace applist::desktop {

/// Creates the window for a list that is shown later, and draws a list in it once without showing
/// it. The toolkit keeps the theme's groups, the fonts and the letters in memory from then on; the
/// window is empty again and has the size of a new one. Returns null if there is no display. The
/// caller owns the window. Main thread only, on X11, while the toolkit is running.
Evas_Object* PrepareWindow(const std::string& name);

}  // namespace applist::desktop
