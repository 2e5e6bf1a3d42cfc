// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Ecore_X.h>

namespace applist::desktop {

/// Directs all keys to an invisible window of this program while it exists, whichever window has
/// the focus. The X server sends one key event and keeps later ones until Next() or the end of the
/// grab. At the end of the grab it sends them to the window with the focus, so that this window
/// receives both press and release. X11 only; main thread only, while the toolkit is running.
class KeyboardGrab {
public:
    KeyboardGrab();
    ~KeyboardGrab();
    KeyboardGrab(const KeyboardGrab&) = delete;
    KeyboardGrab& operator=(const KeyboardGrab&) = delete;
    KeyboardGrab(KeyboardGrab&&) = delete;
    KeyboardGrab& operator=(KeyboardGrab&&) = delete;

    /// Has the X server send the next key event. Call it after each one.
    static void Next();

private:
    Ecore_X_Window m_window;
};

}  // namespace applist::desktop
