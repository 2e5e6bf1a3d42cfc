// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Ecore_Input.h>
#include <Evas.h>

#include "display/Windows.h"

namespace applist::desktop {

/// Moves the focus of a genlist whose loop is enabled, one row for each Up and Down, and round its
/// ends. The toolkit follows the loop only for keys with Shift; it stays where it is when the next
/// row has not been drawn yet, which is soon with keys that come faster than frames; and on Right
/// and Left it may jump to another row while the rows are being laid out. Main thread only.
class ListSteps {
public:
    /// windows must outlive the object.
    explicit ListSteps(Windows& windows) : m_windows(windows) {}

    /// True iff the key is dealt with here; then the toolkit must not see it.
    bool Press(const Ecore_Event_Key& key);

private:
    static void Step(const Evas_Object* list, bool up);

    Windows& m_windows;
};

}  // namespace applist::desktop
