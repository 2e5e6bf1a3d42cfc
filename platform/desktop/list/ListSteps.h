// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Ecore_Input.h>
#include <Elementary.h>

#include "display/EventHandler.h"
#include "display/Windows.h"

namespace applist::desktop {

/// Moves the focus of a genlist whose loop is enabled: by a row for Up and Down, round its ends,
/// and by a page for Prior and Next, as far as an end. If no row has the focus, a key focuses the
/// first row in its direction. The toolkit would wrap only for keys with Shift, would not move to a
/// row that has not been drawn yet, would scroll by a page without the focus, and may jump to
/// another row on Left and Right while the rows are being laid out. Main thread only.
class ListSteps {
public:
    /// windows must outlive the object. Create it before the Keyboard, so that its handler is
    /// called after the keyboard's: it then sees the keys under their remote control names, and not
    /// those that the keyboard discards.
    explicit ListSteps(Windows& windows);

    /// Handles a key press. Returns true if the toolkit must not see the key.
    bool Press(const Ecore_Event_Key& key);

private:
    static void Focus(const Evas_Object* list, Elm_Object_Item* row);

    Windows& m_windows;
    EventHandler m_press;
};

}  // namespace applist::desktop
