// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Ecore_Input.h>
#include <Elementary.h>

namespace applist::desktop {

/// Moves the focus of a genlist round its end, where its loop is enabled: Down on the last row goes
/// to the first, Up on the first to the last.
///
/// The toolkit has the setting and does this only for keys with Shift. Returns true iff the key
/// press was that; then the toolkit must not see it. Main thread only.
bool WrapAround(const Evas_Object* window, const Ecore_Event_Key& press);

}  // namespace applist::desktop
