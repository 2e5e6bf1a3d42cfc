// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "display/KeyboardGrab.h"

#include <X11/Xlib.h>

namespace applist::desktop {
namespace {

Display* Server() {
    return static_cast<Display*>(ecore_x_display_get());
}

}  // namespace

KeyboardGrab::KeyboardGrab() : m_window(ecore_x_window_input_new(0, -1, -1, 1, 1)) {
    ecore_x_window_show(m_window);
    // Fails if another program already grabs the keyboard. Keys then go to that program.
    static_cast<void>(XGrabKeyboard(Server(), static_cast<Window>(m_window), False, GrabModeAsync,
                                    GrabModeSync, CurrentTime));
    Next();
}

KeyboardGrab::~KeyboardGrab() {
    ecore_x_keyboard_ungrab();
    ecore_x_window_free(m_window);
    ecore_x_flush();
}

void KeyboardGrab::Next() {
    XAllowEvents(Server(), SyncKeyboard, CurrentTime);
    XFlush(Server());
}

}  // namespace applist::desktop
