// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Ecore.h>
#include <Ecore_Input.h>

#include "display/Windows.h"

namespace applist::desktop {

/// Moves the focus of a genlist round its end, where its loop is enabled: Down on the last row goes
/// to the first, Up on the first to the last. The toolkit has the setting, but follows it only for
/// keys with Shift. Main thread only; lives while the toolkit does.
class WrapAround {
public:
    /// windows must outlive the object.
    explicit WrapAround(Windows& windows) : m_windows(windows) {}
    /// True iff it moved the focus by the key; then the toolkit must not see the key.
    bool Press(const Ecore_Event_Key& key);

private:
    Windows& m_windows;
};

}  // namespace applist::desktop
