// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Ecore.h>
#include <Elementary.h>
#include <functional>
#include <set>
#include <utility>
#include <vector>

#include "display/EventHandler.h"

namespace applist::desktop {

/// The program's windows, seen from their making on, and what a desktop does to them.
///
/// Main thread only, one at a time, made before the first window and ended after the last.
class Windows {
public:
    struct Listener {
        /// Some window is visible now, or none any more. Starts as not visible.
        std::function<void(bool visible)> visibilityChanged;
        /// The window manager was asked to close a window.
        std::function<void()> closeRequested;
    };

    /// Codes of keys, as in Ecore_Event_Key.
    using Keys = std::set<unsigned int>;

    explicit Windows(Listener listener);
    ~Windows();
    Windows(const Windows&) = delete;
    Windows& operator=(const Windows&) = delete;
    Windows(Windows&&) = delete;
    Windows& operator=(Windows&&) = delete;

    /// Our window with this id, or null.
    Evas_Object* Find(Ecore_Window id);

    /// False for a key that reaches a window of ours while it cannot be seen: on a display without
    /// a window manager the focus stays with a window that something else has come to lie over.
    bool TakesKeys(Ecore_Window id);

    /// Calls listener when a window of ours receives the keyboard on X, or loses it on Wayland.
    /// held are the keys that are down at this moment: their repeats and releases may reach the
    /// window. On Wayland they do not, and held is empty. listener must stay valid while there are
    /// windows.
    void OnKeyboardMoved(std::function<void(const Keys& held)> listener) {
        m_keyboardMoved = std::move(listener);
    }

    /// Takes all windows off the screen and ignores their input from now on. True iff one was
    /// shown.
    bool Hide();

    void Added(Evas_Object* window);
    void Deleted(const Evas_Object* window);
    void CloseRequested() const { m_listener.closeRequested(); }
    /// The X server has put the window on the screen, or taken it away.
    void Mapped(Ecore_Window id, bool mapped);
    /// The X server says how much of the window can be seen. True iff the window is ours.
    bool Obscured(Ecore_Window id, bool obscured);
    /// The window has become the active one, or is it no more. On Wayland this is all that a
    /// program learns of whether it can be seen; elsewhere it says nothing.
    void Activated(const Evas_Object* object, bool active);
    /// A window of ours may get keys from now on, or gets them no more.
    void KeyboardMoved(const Keys& held) const { m_keyboardMoved(held); }
    /// The time to wait for a change back is over.
    void Settle();

private:
    struct Window {
        Evas_Object* object;
        bool mapped = false;
        bool obscured = false;
    };
    Window* Lookup(Ecore_Window id);
    static bool Visible(const Window& window);
    void ListenToDisplay();
    void Update();
    void Report(bool visible);
    void StopSettling();

    Listener m_listener;
    std::function<void(const Keys& held)> m_keyboardMoved = [](const Keys&) {};
    std::vector<Window> m_windows;
    std::vector<EventHandler> m_handlers;
    Ecore_Timer* m_settling = nullptr;
    bool m_visible = false;
};

}  // namespace applist::desktop
