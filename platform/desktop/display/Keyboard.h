// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Ecore_Input.h>
#include <optional>

#include "KeyTable.h"
#include "display/EventHandler.h"
#include "display/KeyboardGrab.h"
#include "display/ListSteps.h"

namespace applist::desktop {

/// Stands between a desktop keyboard and those who listen to keys, the toolkit included, and makes
/// it a remote control. In particular no popup sees Escape, which would dismiss it and leave an
/// empty window, and none of them sees a key while the window that it goes to cannot be seen. A
/// release is passed on only if its press was: a key that was held down before the window opened
/// does nothing until it is pressed again. A handler that is prepended after this one still sees
/// the original key. Main thread only; lives while the toolkit does.
class Keyboard {
public:
    /// windows must outlive the object. keys says which key is which of the remote control.
    explicit Keyboard(Windows& windows, KeyTable keys = {});

    /// A key goes down; true iff nobody else may see it.
    bool Press(Ecore_Event_Key& key);
    /// A key comes up; the same.
    bool Release(Ecore_Event_Key& key);
    /// Passes no key on any more. Call it before the windows are hidden: on X11 a key that is down
    /// then, or goes down meanwhile, stays with this program until it is released, at most as long
    /// as this object lives, so that no other window receives its release alone. On Wayland the
    /// compositor tells the next window which keys are down, and the release goes to that window.
    void Close();
    /// True while a key is down that was pressed in a visible window of ours. The release of such a
    /// key is missed if the window loses the keyboard first.
    bool HasKeysDown() const { return !m_down.empty(); }
    /// See Windows::OnKeyboardMoved().
    void Moved(const Windows::Keys& held);

private:
    void Rename(Ecore_Event_Key& key) const;
    void ReleaseGrab();

    Windows& m_windows;
    KeyTable m_keys;
    ListSteps m_listSteps;
    /// Keys that were pressed in a visible window and have not been released since.
    Windows::Keys m_down;
    /// Keys that were pressed before, and whose repeats arrive like new presses.
    Windows::Keys m_heldBefore;
    std::optional<KeyboardGrab> m_grab;
    bool m_closed = false;
    EventHandler m_press;
    EventHandler m_release;
};

}  // namespace applist::desktop
