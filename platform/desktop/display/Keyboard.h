// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Ecore_Input.h>
#include <Ecore_X.h>
#include <optional>

#include "data/KeyTable.h"
#include "display/EventHandler.h"
#include "display/Windows.h"

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

/// Makes a desktop keyboard act as a remote control. It handles key events ahead of all other
/// handlers, including the toolkit's.
///
/// It hides Escape from popups, because the toolkit would dismiss the popup and leave an empty
/// window. It discards keys for a window that is not visible. It passes a release on only if it has
/// passed the press on, so a key that was held down before the window opened is ignored until it is
/// pressed again. A handler prepended after this one still sees the original key. Main thread only,
/// while the toolkit is running.
class Keyboard {
public:
    /// windows must outlive the object. keys maps keys to keys of the remote control.
    explicit Keyboard(Windows& windows, KeyTable keys = {});

    /// Handles a key press. Returns true if other handlers must not see it.
    bool Press(Ecore_Event_Key& key);
    /// Handles a key release, with the same result.
    bool Release(Ecore_Event_Key& key);
    /// Discards all keys from now on. Call it before the windows are hidden. On X11, if a key is
    /// down, this program keeps receiving all keys until none is down, at most until this object is
    /// destroyed. Otherwise another window would receive a release without its press. On Wayland
    /// the compositor sends the next window the keys that are down, and that window receives the
    /// releases.
    void Close();
    /// True while a key is down that was pressed in a visible window of this program. If the window
    /// loses the keyboard first, the key's release is missed.
    bool HasKeysDown() const { return !m_down.empty(); }
    /// See Windows::OnKeyboardMoved().
    void Moved(const Windows::Keys& held);

private:
    void Rename(Ecore_Event_Key& key) const;
    void ReleaseGrab();

    Windows& m_windows;
    KeyTable m_keys;
    /// Keys that were pressed in a visible window and not released since.
    Windows::Keys m_down;
    /// Keys that were pressed before the window had the keyboard. Their repeats look like new
    /// presses.
    Windows::Keys m_heldBefore;
    std::optional<KeyboardGrab> m_grab;
    bool m_closed = false;
    EventHandler m_press;
    EventHandler m_release;
};

}  // namespace applist::desktop
