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
    ~WrapAround();
    WrapAround(const WrapAround&) = delete;
    WrapAround& operator=(const WrapAround&) = delete;
    WrapAround(WrapAround&&) = delete;
    WrapAround& operator=(WrapAround&&) = delete;

    /// True iff the key leads round an end; then the toolkit must not see it. The focus follows in
    /// this turn of the loop.
    bool Press(const Ecore_Event_Key& key);
    void Finish();

private:
    Windows& m_windows;
    Ecore_Window m_window = 0;
    bool m_up = false;
    Ecore_Job* m_job = nullptr;
};

}  // namespace applist::desktop
