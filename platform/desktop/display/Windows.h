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

/// Tracks all windows of the program from their creation, reports their visibility and adapts them
/// to a desktop.
///
/// Main thread only. At most one at a time; created before the first window and destroyed after the
/// last.
class Windows {
public:
    struct Listener {
        /// Called when the first window becomes visible (true) or the last one becomes hidden
        /// (false). Initially not visible.
        std::function<void(bool visible)> visibilityChanged;
        /// Called when the viewer asks the window manager to close a window.
        std::function<void()> closeRequested;
        /// Called for each window when it is created.
        std::function<void(Evas_Object* window)> created = [](Evas_Object*) {};
    };

    /// Key codes, as in Ecore_Event_Key.
    using Keys = std::set<unsigned int>;

    explicit Windows(Listener listener);
    ~Windows();
    Windows(const Windows&) = delete;
    Windows& operator=(const Windows&) = delete;
    Windows(Windows&&) = delete;
    Windows& operator=(Windows&&) = delete;

    /// Returns the window with this id, or null if it does not belong to this program.
    Evas_Object* Find(Ecore_Window id);

    /// Returns false if keys for this window must be discarded, because the window is not visible.
    /// Without a window manager the focus stays on a window that another one has covered.
    bool TakesKeys(Ecore_Window id);

    /// Calls listener when a window of this program gets the keyboard on X11, or loses it on
    /// Wayland. held contains the keys that are down at that time, because their repeats and
    /// releases may reach the window. On Wayland they do not, so held is empty. listener must stay
    /// valid while windows exist.
    void OnKeyboardMoved(std::function<void(const Keys& held)> listener) {
        m_keyboardMoved = std::move(listener);
    }

    /// Hides all windows and ignores their input from now on. Returns true if one was shown.
    bool Hide();

    void Added(Evas_Object* window);
    void Deleted(const Evas_Object* window);
    void CloseRequested() const { m_listener.closeRequested(); }
    /// The X server has mapped or unmapped the window.
    void Mapped(Ecore_Window id, bool mapped);
    /// The X server has given the keyboard to the root window. If a window of another program had
    /// it and is gone, a shown window of this program takes it, unless a window manager decides.
    void RootFocused();
    /// The X screen has another size: adapts the windows to it.
    void ScreenChanged();
    /// The X server has reported whether the window is obscured. Returns true if the window belongs
    /// to this program.
    bool Obscured(Ecore_Window id, bool obscured);
    /// The window has become active or inactive. On Wayland this is the only information about its
    /// visibility; on other displays it is ignored.
    void Activated(const Evas_Object* object, bool active);
    /// The keyboard has moved to or from a window of this program; see OnKeyboardMoved().
    void KeyboardMoved(const Keys& held) const { m_keyboardMoved(held); }
    /// Called by the timer: reports the windows as hidden unless they were shown again.
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
