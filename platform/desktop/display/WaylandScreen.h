// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Evas.h>

namespace applist::desktop {

/// Returns true if a Wayland display accepts connections.
bool WaylandAnswers();

/// Returns the height of the screen in pixels for a window on Wayland, 0 otherwise. Waits for the
/// display's reply, because widgets created before the toolkit receives the size would be scaled
/// for another screen.
int WaylandScreenHeight(const Evas_Object* window);

}  // namespace applist::desktop
