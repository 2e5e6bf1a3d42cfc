// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Ecore.h>
#include <memory>
#include <optional>

#include "display/EventHandler.h"
#include "display/Windows.h"

namespace applist::desktop {

struct DeleteEnterer {
    void operator()(Ecore_Idle_Enterer* enterer) const { ecore_idle_enterer_del(enterer); }
};
/// A function that the toolkit calls before it waits, and before it draws what has changed.
using IdleEnterer = std::unique_ptr<Ecore_Idle_Enterer, DeleteEnterer>;

/// Delivers the widgets' signals to the theme before a frame is drawn. The toolkit would deliver
/// them in the next loop iteration and may draw before that, so that the focus would be shown one
/// frame late. Main thread only, while the toolkit is running.
class ThemeSignals {
public:
    ThemeSignals();

private:
    IdleEnterer m_beforeFrame;
};

/// Draws a frame as soon as a key has been handled. The toolkit would wait for its next tick, up to
/// one frame later, which is most of the delay that a viewer notices. Keys that arrive together
/// share one frame. Main thread only.
class KeyFrames {
public:
    /// Create it after all other key handlers: its handlers are then called first and see every
    /// key. windows must outlive the object.
    explicit KeyFrames(Windows& windows);

    /// A key was pressed or released in a window.
    void Note(Ecore_Window window) { m_window = window; }
    /// Called before the loop waits, when all changes by the keys have been made.
    void Draw();

private:
    Windows& m_windows;
    std::optional<Ecore_Window> m_window;
    EventHandler m_press;
    EventHandler m_release;
    IdleEnterer m_beforeWait;
};

}  // namespace applist::desktop
