// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Ecore_Input.h>

#include "display/EventHandler.h"
#include "display/ListSteps.h"

namespace applist::desktop {

/// Stands between a desktop keyboard and those who listen to keys, the toolkit included, and makes
/// it a remote control. In particular no popup sees Escape, which would dismiss it and leave an
/// empty window, and none of them sees a key while the window that it goes to cannot be seen. Only
/// who asks later to be told first sees the key as it came. Main thread only; lives while the
/// toolkit does.
class Keyboard {
public:
    /// windows must outlive the object.
    explicit Keyboard(Windows& windows);

    /// A key goes down; true iff nobody else may see it.
    bool Press(Ecore_Event_Key& key);
    /// A key comes up; the same.
    bool Release(Ecore_Event_Key& key);

private:
    Windows& m_windows;
    ListSteps m_listSteps;
    EventHandler m_press;
    EventHandler m_release;
};

}  // namespace applist::desktop
