// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Ecore.h>
#include <memory>
#include <optional>

#include "display/EventHandler.h"
#include "display/Windows.h"

namespace applist::desktop {

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
    struct Delete {
        void operator()(Ecore_Idle_Enterer* enterer) const { ecore_idle_enterer_del(enterer); }
    };

    Windows& m_windows;
    std::optional<Ecore_Window> m_window;
    EventHandler m_press;
    EventHandler m_release;
    std::unique_ptr<Ecore_Idle_Enterer, Delete> m_beforeWait;
};

}  // namespace applist::desktop
