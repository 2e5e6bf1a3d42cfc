// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Elementary.h>
#include <functional>
#include <string>

#include "display/EventHandler.h"

namespace applist::desktop {

/// What a viewer must know who cannot see the list.
struct ListEvent {
    enum class Kind {
        /// Another row has the focus; name, position and count describe it.
        FOCUSED,
        /// Rows were added, removed or replaced. Sent when no more changes follow for 0.3 s.
        CHANGED,
        /// The list has been empty for 0.5 s.
        WAITING,
        /// The list closes in 20 s.
        CLOSING,
        /// A key was pressed.
        KEY,
    };
    Kind kind;
    Evas_Object* list;
    /// The title of the list's popup.
    std::string title;
    std::string name;
    /// 1 for the first row.
    int position;
    int count;
};

/// Returns the text of a row as it is drawn, as valid UTF-8; empty if the row does not have a text.
std::string RowText(const Evas_Object* list, const Elm_Object_Item* row);
/// Returns the title of the popup around the list, or an empty text.
std::string TitleOf(const Evas_Object* list);

/// Shows in the popup around a list what the rows do not show: the position and the number of rows,
/// a text while the list is empty, and a note before the list closes. The theme's popup group has a
/// part for each; a theme without them is valid. Main thread only; must not outlive the list.
class ListPanel {
public:
    /// The program closes the list when it has been idle for OPEN_SECONDS. The note appears
    /// NOTE_SECONDS earlier. Idle is counted like in the program: from the last release of an arrow
    /// key or change of the selection.
    static constexpr double OPEN_SECONDS = 65.0;
    static constexpr double NOTE_SECONDS = 20.0;

    using Listener = std::function<void(const ListEvent&)>;
    /// Calls listener for the events of all lists from now on; an empty one ends this.
    static void Listen(Listener listener);

    explicit ListPanel(Evas_Object* list);
    ~ListPanel();
    ListPanel(const ListPanel&) = delete;
    ListPanel& operator=(const ListPanel&) = delete;
    ListPanel(ListPanel&&) = delete;
    ListPanel& operator=(ListPanel&&) = delete;

    /// Shows the current state. Cheap if it has not changed.
    void Update();
    /// Shows the current state in a theme that has just been loaded.
    void Redraw();
    /// The rows may have changed.
    void RowsChanged();
    /// The viewer or the middleware has used the list: hides the note and restarts the wait for it.
    void Used();
    /// A key was pressed, which need not have an effect.
    void Pressed() const { Report(ListEvent::Kind::KEY); }
    /// For the key handler.
    void Released(const Ecore_Event_Key& key);
    /// For the timers.
    void ShowNote();
    void ShowEmpty();
    void ReportRows();

private:
    void ShowCount();
    void DrawNote() const;
    void SetText(const char* part, const std::string& text) const;
    void Report(ListEvent::Kind kind) const;
    size_t Fingerprint() const;
    static void Restart(Ecore_Timer*& timer, double seconds, Ecore_Task_Cb callback,
                        const ListPanel* panel);
    static void Stop(Ecore_Timer*& timer);

    Evas_Object* m_list;
    /// Null without a popup.
    Evas_Object* m_drawing;
    Ecore_Timer* m_note = nullptr;
    Ecore_Timer* m_empty = nullptr;
    Ecore_Timer* m_changes = nullptr;
    Ecore_Idle_Enterer* m_beforeWait;
    EventHandler m_release;
    const Elm_Object_Item* m_focused = nullptr;
    int m_position = 0;
    int m_count = 0;
    size_t m_rows = 0;
    bool m_noteShown = false;
    bool m_emptyShown = false;
};

}  // namespace applist::desktop
