// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Elementary.h>
#include <string>

#include "display/EventHandler.h"
#include "list/ListNews.h"

namespace applist::desktop {

/// Returns the text of a row as it is drawn, as valid UTF-8; empty if the row does not have a text.
std::string RowText(const Evas_Object* list, const Elm_Object_Item* row);
/// Returns the title of the popup around the list, or an empty text.
std::string TitleOf(const Evas_Object* list);

/// Shows in the popup around a list what the rows do not show: the position and the number of rows,
/// a text while the list is empty, and a note before the list closes. The theme's popup group has a
/// part for each; a theme without them is valid. Main thread only; must not outlive the list.
class ListPanel {
public:
    /// The program closes the list OPEN_SECONDS after the last release of an arrow key or change of
    /// the selection. The note appears NOTE_SECONDS earlier, with a timer that restarts in the same
    /// cases.
    static constexpr double OPEN_SECONDS = 65.0;
    static constexpr double NOTE_SECONDS = 20.0;

    explicit ListPanel(Evas_Object* list);
    ~ListPanel();
    ListPanel(const ListPanel&) = delete;
    ListPanel& operator=(const ListPanel&) = delete;
    ListPanel(ListPanel&&) = delete;
    ListPanel& operator=(ListPanel&&) = delete;

    /// The program has set the rows or the selection.
    void Placed() { m_placed = true; }
    /// Says whether the next frame will correct the focus. Until then ListNews does not tell which
    /// row has it.
    void AwaitCorrection(bool awaits) { m_awaitsCorrection = awaits; }
    /// Shows and tells the current state. Cheap if it has not changed.
    void Update();
    /// Shows the current state in a theme that has just been loaded.
    void Redraw();
    /// Called when the toolkit has drawn the list for another theme or scale.
    void Rescale();
    /// The viewer or the middleware has used the list: hides the note and restarts its timer.
    void Used();
    /// Called by the key handler for each key release.
    void Released(const Ecore_Event_Key& key);
    /// Called by the timers.
    void ShowNote();
    void Settle();

private:
    void ShowCount();
    void RowsChanged();
    void DrawNote() const;
    void SetText(const char* part, const std::string& text) const;
    static void Restart(Ecore_Timer*& timer, double seconds, Ecore_Task_Cb callback,
                        const ListPanel* panel);
    static void Stop(Ecore_Timer*& timer);

    Evas_Object* m_list;
    /// Null without a popup.
    Evas_Object* m_drawing;
    /// The toolkit's scale to which the list's minimum size belongs.
    double m_scale;
    Ecore_Timer* m_note = nullptr;
    Ecore_Timer* m_settling = nullptr;
    Ecore_Idle_Enterer* m_beforeWait;
    EventHandler m_release;
    ListNews m_news;
    int m_position = 0;
    int m_count = 0;
    bool m_placed = false;
    bool m_awaitsCorrection = false;
    bool m_noteShown = false;
    bool m_emptyShown = false;
};

}  // namespace applist::desktop
