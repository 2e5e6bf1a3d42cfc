// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Ecore_X.h>
#include <Evas.h>

/// Adapts the application, which is designed for a screen 1080 pixels high, to other screens by the
/// toolkit's scale factor. A scale factor that the viewer has set is kept. Main thread only, while
/// the toolkit is running.
namespace applist::desktop {

/// Returns the X monitor at the origin, where windows appear, or the whole screen if monitors are
/// not known.
Eina_Rectangle FirstMonitor();
/// Sets the scale factor for the screen on which the new window will appear. If the display does
/// not report screens, sets it whenever the window's size changes.
void FitToScreen(Evas_Object* window);
/// Resizes an X window to the size of its screen, for displays without a window manager.
void FillScreen(Ecore_X_Window window);

/// Returns true if a Wayland display accepts connections.
bool WaylandAnswers();

}  // namespace applist::desktop
