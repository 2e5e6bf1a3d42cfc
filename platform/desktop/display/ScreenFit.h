// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Ecore_X.h>
#include <Evas.h>

/// What the application draws is measured for a screen 1080 pixels high. On others the toolkit's
/// scale keeps the proportions; a scale that the viewer chose for the toolkit is left alone.
/// Main thread only, while the toolkit works.
namespace applist::desktop {

/// Sets the scale for the screen on which the new window is to appear. On a display that does not
/// tell the screen's size it is set when the window gets its own, and again when that changes.
void FitToScreen(Evas_Object* window);
/// Makes an X window as large as the screen, which nobody does where there is no window manager.
void FillScreen(Ecore_X_Window window);

}  // namespace applist::desktop
