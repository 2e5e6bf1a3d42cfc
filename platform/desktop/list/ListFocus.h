// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Elementary.h>
#include <optional>

#include "display/EventHandler.h"
#include "list/ListPanel.h"

namespace applist::desktop {

/// Keeps the focus of a genlist on the row that the program or the viewer has chosen; see
/// list_focus.h. Deletes itself together with the list. Main thread only.
///
/// The toolkit's genlist needs this for five reasons:
/// - It scrolls by its last layout, and the focus gets lost on a row that is not laid out yet.
/// - It drops a request for the focus while its window does not have the focus.
/// - It moves the focus to other rows while it deletes rows or lays them out.
/// - It never moves the focus by key again if it is cleared while a row has the focus. Until its
///   first rows are laid out the list is therefore closed to focus.
/// - When its height changes, it scrolls so that one row keeps its place. If that row was deleted,
///   it moves the next row there, and the view jumps.
class ListFocus {
public:
    /// True if the row is a widget, which only the rows near the viewport are.
    static bool IsRealized(const Evas_Object* list, const Elm_Object_Item* row);
    /// The object of this list, created on the first call.
    static ListFocus& Of(Evas_Object* list);

    ListFocus(const ListFocus&) = delete;
    ListFocus& operator=(const ListFocus&) = delete;
    ListFocus(ListFocus&&) = delete;
    ListFocus& operator=(ListFocus&&) = delete;

    /// Focuses the row now if it is a widget, and again in the next frame.
    void Set(Elm_Object_Item* row);
    ListPanel& panel() { return m_panel; }
    /// Shows the focus, the first row in view and the panel's texts again after another theme has
    /// been loaded. Applies to all lists.
    static void ThemeSwitched();
    /// Prepares for a list without rows: before it is filled and before it is cleared.
    void Close();

private:
    explicit ListFocus(Evas_Object* list);
    ~ListFocus();

    static void OnDeleted(void* focus, Evas* canvas, Evas_Object* list, void* event);
    static void OnRealized(void* focus, Evas_Object* list, void* row);
    static void OnItemFocused(void* focus, Evas_Object* list, void* row);
    static void OnWindowFocused(void* focus, Evas_Object* window, void* event);
    static void OnFrame(void* focus, Evas* canvas, void* event);
    static Eina_Bool OnPress(void* focus, int type, void* key);
    static void OnTurn(void* focus);

    /// Runs as many turns of the loop as the toolkit needs to place the rows that were added.
    void PlaceRows();
    void LayOutRows();
    void KeepTurning();
    void Refocus();
    /// The number of the row at the top of the view, counted from 0.
    unsigned int FirstInView() const;
    /// Scrolls to that row.
    void RestoreView(unsigned int first);
    bool IsOpen() const;
    /// Makes the toolkit keep the row that is the first one in view now where it is.
    void AnchorView();
    void Choose(Elm_Object_Item* row);
    void RequestFrame();
    void DropFrame();
    void Frame();
    void Open();
    void OpenForKey();
    /// Focuses the first row, with an event to the program, if no row is chosen or focused.
    void FocusFirstRow();
    /// Scrolls to the chosen row and focuses it, without an event to the program.
    void Settle();

    Evas_Object* m_list;
    Evas_Object* m_window;
    Evas* m_canvas;
    /// A weak reference: null after the row was deleted.
    Elm_Object_Item* m_row = nullptr;
    EventHandler m_press;
    ListPanel m_panel;
    Ecore_Job* m_turn = nullptr;
    int m_turns = 0;   ///< How many more turns of the loop are needed.
    int m_placed = 0;  ///< The number of rows for which turns were counted.
    bool m_frameRequested = false;
    bool m_muted = false;
    /// Set from the switch of the theme to the next frame.
    std::optional<unsigned int> m_firstInView;
};

}  // namespace applist::desktop
