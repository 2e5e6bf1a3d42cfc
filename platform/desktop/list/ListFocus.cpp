// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "list/ListFocus.h"

#include <Edje.h>
#include <algorithm>
#include <set>
#include <utility>

#include "CallbackGuard.h"
#include "list_focus.h"
#include "toolkit-internals/FocusNodes.h"

namespace applist::desktop {
namespace {

constexpr const char* KEY = "applist-list-focus";

ListFocus& FocusIn(void* focus) {
    return *static_cast<ListFocus*>(focus);
}

}  // namespace

bool ListFocus::IsRealized(const Evas_Object* list, const Elm_Object_Item* row) {
    Eina_List* rows = elm_genlist_realized_items_get(list);
    const bool realized = eina_list_data_find(rows, row) != nullptr;
    eina_list_free(rows);
    return realized;
}

ListFocus& ListFocus::Of(Evas_Object* list) {
    void* known = evas_object_data_get(list, KEY);
    return known != nullptr ? FocusIn(known) : *new ListFocus(list);
}

namespace {

std::set<ListFocus*>& AllLists() {
    static std::set<ListFocus*> lists;
    return lists;
}

}  // namespace

void ListFocus::ThemeSwitched() {
    for (ListFocus* focus : AllLists()) {
        focus->m_panel.Redraw();
        focus->m_firstInView = focus->FirstInView();
        focus->Refocus();
        focus->RequestFrame();
    }
}

// The toolkit draws the rows again, but does not tell the theme which of them has the focus. So the
// list loses the focus here and gets it back in the next frame.
void ListFocus::Refocus() {
    Elm_Object_Item* row = elm_object_focused_item_get(m_list);
    if (row == nullptr) {
        return;
    }
    m_muted = true;
    elm_object_focus_allow_set(m_list, EINA_FALSE);
    m_muted = false;
    Choose(row);
}

// All rows have the same height.
unsigned int ListFocus::FirstInView() const {
    int above = 0;
    int content = 0;
    elm_scroller_region_get(m_list, nullptr, &above, nullptr, nullptr);
    elm_scroller_child_size_get(m_list, nullptr, &content);
    const unsigned int rows = elm_genlist_items_count(m_list);
    return static_cast<unsigned int>(above) * rows /
           static_cast<unsigned int>(std::max(content, 1));
}

// When the toolkit loads a theme, it may scroll a part of a row.
void ListFocus::RestoreView(unsigned int first) {
    int content = 0;
    int view = 0;
    elm_scroller_child_size_get(m_list, nullptr, &content);
    elm_scroller_region_get(m_list, nullptr, nullptr, nullptr, &view);
    Elm_Object_Item* row = elm_genlist_nth_item_get(m_list, first);
    if (content > view && row != nullptr) {
        elm_genlist_item_show(row, ELM_GENLIST_ITEM_SCROLLTO_TOP);
        evas_smart_objects_calculate(m_canvas);
    }
}

ListFocus::ListFocus(Evas_Object* list)
    : m_list(list),
      m_window(elm_object_top_widget_get(list)),
      m_canvas(evas_object_evas_get(list)),
      m_press(EventHandler::InFront(ECORE_EVENT_KEY_DOWN, OnPress, this)),
      m_panel(list) {
    // All rows have the theme's row height. Otherwise the toolkit measures each row, also those
    // that are never visible, which takes 25 us per row.
    elm_genlist_homogeneous_set(list, EINA_TRUE);
    AllLists().insert(this);
    evas_object_data_set(list, KEY, this);
    evas_object_event_callback_add(list, EVAS_CALLBACK_DEL, OnDeleted, this);
    evas_object_smart_callback_add(list, "realized", OnRealized, this);
    // Called ahead of the program's handler, which must not see every move.
    evas_object_smart_callback_priority_add(list, "item,focused", EVAS_CALLBACK_PRIORITY_BEFORE,
                                            OnItemFocused, this);
    evas_object_smart_callback_add(m_window, "focused", OnWindowFocused, this);
}

ListFocus::~ListFocus() {
    AllLists().erase(this);
    if (m_turn != nullptr) {
        ecore_job_del(m_turn);
    }
    DropFrame();
    Choose(nullptr);
    evas_object_smart_callback_del_full(m_window, "focused", OnWindowFocused, this);
    // The toolkit deletes the rows after this. It may realise or focus another one while it does
    // so.
    evas_object_smart_callback_del_full(m_list, "realized", OnRealized, this);
    evas_object_smart_callback_del_full(m_list, "item,focused", OnItemFocused, this);
    evas_object_data_del(m_list, KEY);
}

void ListFocus::OnDeleted(void* focus, Evas*, Evas_Object*, void*) {
    delete &FocusIn(focus);
}

void ListFocus::OnRealized(void* focus, Evas_Object*, void*) {
    if (!FocusIn(focus).IsOpen()) {
        FocusIn(focus).RequestFrame();
    }
}

void ListFocus::OnItemFocused(void* focus, Evas_Object* list, void* row) {
    if (FocusIn(focus).m_muted) {
        efl_event_callback_stop(list);
    } else {
        FocusIn(focus).Choose(static_cast<Elm_Object_Item*>(row));
    }
}

// When the window receives the focus, the toolkit may focus any row or none.
void ListFocus::OnWindowFocused(void* focus, Evas_Object*, void*) {
    GuardCallback([focus] {
        FocusIn(focus).FocusFirstRow();
        FocusIn(focus).Settle();
    });
}

void ListFocus::OnFrame(void* focus, Evas*, void*) {
    GuardCallback([focus] { FocusIn(focus).Frame(); });
}

Eina_Bool ListFocus::OnPress(void* focus, int, void*) {
    GuardCallback([focus] { FocusIn(focus).OpenForKey(); });
    return ECORE_CALLBACK_PASS_ON;
}

// The toolkit deletes the job before it calls this.
void ListFocus::OnTurn(void* focus) {
    FocusIn(focus).m_turn = nullptr;
    FocusIn(focus).LayOutRows();
    FocusIn(focus).KeepTurning();
}

bool ListFocus::IsOpen() const {
    return elm_object_focus_allow_get(m_list) != EINA_FALSE;
}

void ListFocus::Choose(Elm_Object_Item* row) {
    if (row != nullptr && row != m_row) {
        // Another row means another selection, with which the program restarts its timer.
        m_panel.Used();
    }
    if (m_row != nullptr) {
        efl_wref_del(m_row, &m_row);
    }
    m_row = row;
    if (m_row != nullptr) {
        efl_wref_add(m_row, &m_row);
    }
}

void ListFocus::Set(Elm_Object_Item* row) {
    Choose(row);
    // Not with a layout: rows that are about to be deleted would be part of it.
    if (IsOpen() && IsRealized(m_list, row)) {
        elm_object_item_focus_set(row, EINA_TRUE);
    }
    AnchorView();
    RequestFrame();
    PlaceRows();
}

// The toolkit places up to 128 new rows per turn of the loop, which then sleeps until the next
// frame. Keys cannot reach rows that are not placed. The last turn lays out the last rows.
void ListFocus::PlaceRows() {
    constexpr int ROWS_PER_TURN = 128;
    const int rows = static_cast<int>(elm_genlist_items_count(m_list));
    const int added = rows - std::exchange(m_placed, rows);
    m_turns += added >= ROWS_PER_TURN ? added / ROWS_PER_TURN + 2 : 0;
    KeepTurning();
}

// Lays out the rows that have been placed since the last turn. The toolkit would do so before the
// next frame and would create a widget for each row to measure it, although all rows have the same
// height. It does not measure them if the list is compressed. But the width of a compressed list's
// rows depends on the scroll bar, so only the part that contains the rows is laid out in this mode,
// and not before the first rows have widgets.
void ListFocus::LayOutRows() {
    Evas_Object* rows =
        edje_object_part_swallow_get(elm_layout_edje_get(m_list), "elm.swallow.content");
    Eina_List* withWidgets = elm_genlist_realized_items_get(m_list);
    const Elm_List_Mode mode = elm_genlist_mode_get(m_list);
    elm_genlist_mode_set(m_list, withWidgets != nullptr ? ELM_LIST_COMPRESS : mode);
    evas_object_smart_calculate(rows);
    elm_genlist_mode_set(m_list, mode);
    eina_list_free(withWidgets);
}

void ListFocus::KeepTurning() {
    if (m_turn == nullptr && m_turns > 0) {
        --m_turns;
        m_turn = ecore_job_add(OnTurn, this);
    }
}

// The toolkit chooses the row only while it scrolls, so the list scrolls by a pixel and back. The
// rows are still where the last frame shows them.
void ListFocus::AnchorView() {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    elm_scroller_region_get(m_list, &x, &y, &width, &height);
    elm_scroller_region_show(m_list, x, y > 0 ? y - 1 : y + 1, width, height);
    elm_scroller_region_show(m_list, x, y, width, height);
}

void ListFocus::Close() {
    m_turns = 0;
    m_placed = 0;
    DropFrame();
    if (m_row != nullptr) {
        // The rows go, and the selection with them, so the program restarts its timer.
        m_panel.Used();
    }
    Choose(nullptr);
    elm_object_focus_allow_set(m_list, EINA_FALSE);
    DeleteUnusedFocusNodes(m_list);
}

void ListFocus::RequestFrame() {
    if (!m_frameRequested) {
        m_frameRequested = true;
        m_panel.AwaitCorrection(true);
        evas_event_callback_add(m_canvas, EVAS_CALLBACK_RENDER_PRE, OnFrame, this);
    }
}

void ListFocus::DropFrame() {
    if (m_frameRequested) {
        m_frameRequested = false;
        m_panel.AwaitCorrection(false);
        evas_event_callback_del_full(m_canvas, EVAS_CALLBACK_RENDER_PRE, OnFrame, this);
    }
}

// At this point everything is laid out but not drawn. Signals to the theme are delivered here,
// because they would otherwise arrive in the next loop iteration and change only the next frame.
void ListFocus::Frame() {
    DropFrame();
    if (m_firstInView) {
        RestoreView(*std::exchange(m_firstInView, std::nullopt));
    }
    Open();
    m_panel.Update();
    edje_message_signal_process();
    evas_smart_objects_calculate(m_canvas);
}

void ListFocus::Open() {
    if (!IsOpen()) {
        m_muted = true;
        elm_object_focus_allow_set(m_list, EINA_TRUE);
        m_muted = false;
    }
    Settle();
}

// A key that arrives before the first frame is meant for the chosen row.
void ListFocus::OpenForKey() {
    if (!IsOpen() && elm_genlist_first_item_get(m_list) != nullptr) {
        evas_smart_objects_calculate(m_canvas);
        DropFrame();
        Open();
    }
}

// The toolkit does not focus a row that is not laid out, such as one that has just replaced
// another.
void ListFocus::FocusFirstRow() {
    Elm_Object_Item* first = elm_genlist_first_item_get(m_list);
    if (m_row == nullptr && first != nullptr && IsOpen() &&
        elm_object_focused_item_get(m_list) == nullptr) {
        evas_smart_objects_calculate(m_canvas);
        elm_object_item_focus_set(first, EINA_TRUE);
    }
}

void ListFocus::Settle() {
    if (m_row == nullptr || !IsOpen()) {
        return;
    }
    m_muted = true;
    // Scrolls at once. elm_genlist_item_bring_in() would scroll over several frames.
    elm_genlist_item_show(m_row, ELM_GENLIST_ITEM_SCROLLTO_IN);
    evas_smart_objects_calculate(m_canvas);
    elm_object_item_focus_set(m_row, EINA_TRUE);
    m_muted = false;
}

}  // namespace applist::desktop

extern "C" void list_focus_set(Evas_Object* list, Elm_Object_Item* row) {
    using applist::desktop::ListFocus;
    applist::GuardCallback([&] {
        ListFocus& focus = ListFocus::Of(list);
        focus.panel().Placed();
        row != nullptr ? focus.Set(row) : focus.Close();
    });
}
