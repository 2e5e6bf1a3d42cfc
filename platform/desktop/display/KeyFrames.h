// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Ecore.h>
#include <memory>
#include <optional>

#include "display/EventHandler.h"
#include "display/Windows.h"

namespace applist::desktop {

/// Draws what a key has changed as soon as it is changed. The toolkit would wait for its next tick,
/// up to a frame later, which is most of what a viewer waits for. Keys that came together share one
/// frame. Main thread only.
class KeyFrames {
public:
    /// Made after whatever else handles keys, so that no key is kept from it. windows must outlive
    /// the object.
    explicit KeyFrames(Windows& windows);

    /// A key went down or came up in a window.
    void Note(Ecore_Window window) { m_window = window; }
    /// All that the keys brought about is done.
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
