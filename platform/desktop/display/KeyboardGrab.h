// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Ecore_X.h>

namespace applist::desktop {

/// Directs all keys to an invisible window of this program while it exists, whichever window has
/// the focus. X11 only; main thread only, while the toolkit is running.
class KeyboardGrab {
public:
    KeyboardGrab() : m_window(ecore_x_window_input_new(0, -1, -1, 1, 1)) {
        ecore_x_window_show(m_window);
        // Fails if another program already grabs the keyboard. Keys then go to that program.
        static_cast<void>(ecore_x_keyboard_grab(m_window));
    }
    ~KeyboardGrab() {
        ecore_x_keyboard_ungrab();
        ecore_x_window_free(m_window);
        ecore_x_flush();
    }
    KeyboardGrab(const KeyboardGrab&) = delete;
    KeyboardGrab& operator=(const KeyboardGrab&) = delete;
    KeyboardGrab(KeyboardGrab&&) = delete;
    KeyboardGrab& operator=(KeyboardGrab&&) = delete;

private:
    Ecore_X_Window m_window;
};

}  // namespace applist::desktop
