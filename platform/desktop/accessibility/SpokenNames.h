// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Ecore.h>
#include <optional>
#include <string>

#include "display/EventHandler.h"
#include "list/News.h"
#include "toolkit-internals/AccessibilityBridge.h"

namespace applist::desktop {

/// Connects the toolkit to the screen reader and names the objects that the toolkit leaves unnamed:
/// lists get the title of their popup, rows get their text. The toolkit knows only the texts of
/// rows that are drawn, but a reader visits all rows. Also passes messages about lists to the
/// reader. Main thread only; must be destroyed before the toolkit shuts down.
class SpokenNames {
public:
    SpokenNames() = default;
    ~SpokenNames() { Turn(false); }
    SpokenNames(const SpokenNames&) = delete;
    SpokenNames& operator=(const SpokenNames&) = delete;
    SpokenNames(SpokenNames&&) = delete;
    SpokenNames& operator=(SpokenNames&&) = delete;

    /// Connects and names all present and future rows, or disconnects. Initially off, at no cost.
    void Turn(bool on);
    /// For the watch: row has been added to list.
    static void RowAdded(Evas_Object* list, Evas_Object* row);
    /// Makes the reader speak a message about list, at once or when it is connected. An empty
    /// message withdraws the last one. list must be in a popup.
    static void Say(Evas_Object* list, const std::string& message);
    /// For the toolkit's event callback: the reader is connected, and speaks the last message.
    static void Repeat();
    /// For the timer: connects again if the toolkit is not connected yet. Returns true if the timer
    /// must call again.
    bool Retry();

private:
    void Connect();

    Ecore_Timer* m_retry = nullptr;
    std::optional<AdditionWatch> m_additions;
    EventHandler m_connected;
    std::optional<NewsListener> m_news;
};

}  // namespace applist::desktop
