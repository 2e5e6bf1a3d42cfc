// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Evas.h>

namespace applist::desktop {

/// True iff a Wayland display accepts connections.
bool WaylandAnswers();

/// The height in pixels of the screen for a window on Wayland, 0 elsewhere. Waits for the display's
/// answer: what is built before it comes by itself would be measured for another screen.
int WaylandScreenHeight(const Evas_Object* window);

}  // namespace applist::desktop
