// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "list/ListPanel.h"

#include <Ecore_Input.h>
#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <utility>

#include "CallbackGuard.h"
#include "i18n_text.h"
#include "toolkit-internals/ShownText.h"

namespace applist::desktop {
namespace {

// A middleware usually fills an empty list within some milliseconds, so the text would flash. It
// may add rows one by one, so only the final number is told.
constexpr double SETTLE_SECONDS = 0.5;

// The theme part of a row that shows its text.
constexpr const char* TEXT_PART = "elm.text";

template <void (ListPanel::*act)()>
Eina_Bool OnTimer(void* panel) {
    GuardCallback([panel] { (static_cast<ListPanel*>(panel)->*act)(); });
    return ECORE_CALLBACK_CANCEL;
}

// Runs once per main-loop iteration, so that several changes of the list are drawn together.
Eina_Bool OnBeforeWait(void* panel) {
    GuardCallback([panel] { static_cast<ListPanel*>(panel)->Update(); });
    return ECORE_CALLBACK_RENEW;
}

Eina_Bool OnRelease(void* panel, int, void* key) {
    GuardCallback([&] {
        static_cast<ListPanel*>(panel)->Released(*static_cast<const Ecore_Event_Key*>(key));
    });
    // Only observes the key; the toolkit still handles it.
    return ECORE_CALLBACK_PASS_ON;
}

void OnThemeChanged(void* panel, Evas_Object*, void*) {
    GuardCallback([panel] { static_cast<ListPanel*>(panel)->Rescale(); });
}

Evas_Object* PopupAround(const Evas_Object* list) {
    Evas_Object* around = elm_object_parent_widget_get(list);
    while (around != nullptr &&
           elm_object_widget_type_get(around) != std::string_view("Elm_Popup")) {
        around = elm_object_parent_widget_get(around);
    }
    return around;
}

// Returns the theme's object that draws the popup. It belongs to the outermost layout inside the
// popup.
Evas_Object* DrawingOfPopupAround(const Evas_Object* list) {
    Evas_Object* layout = nullptr;
    for (Evas_Object* around = elm_object_parent_widget_get(list); around != nullptr;
         around = elm_object_parent_widget_get(around)) {
        const std::string_view type = elm_object_widget_type_get(around);
        if (type == "Elm_Popup") {
            return layout != nullptr ? elm_layout_edje_get(layout) : nullptr;
        }
        if (type == "Elm_Layout") {
            layout = around;
        }
    }
    return nullptr;
}

std::string PositionText(int position, int count) {
    return Filled(i18n_get_text("LIST_POSITION"),
                  {{"{position}", std::to_string(position)}, {"{count}", std::to_string(count)}});
}

}  // namespace

std::string RowText(const Evas_Object* list, const Elm_Object_Item* row) {
    const Elm_Genlist_Item_Class* kind = elm_genlist_item_item_class_get(row);
    if (kind == nullptr || kind->func.text_get == nullptr) {
        return {};
    }
    // The row class returns a malloc'd copy. Its C signature takes a non-const list.
    const std::unique_ptr<char, decltype(&std::free)> text(
        kind->func.text_get(elm_object_item_data_get(row), const_cast<Evas_Object*>(list),
                            TEXT_PART),
        std::free);
    return text ? SpokenText(text.get()) : "";
}

std::string TitleOf(const Evas_Object* list) {
    const Evas_Object* popup = PopupAround(list);
    const char* title = popup != nullptr ? elm_object_part_text_get(popup, "title,text") : nullptr;
    return title != nullptr ? title : "";
}

ListPanel::ListPanel(Evas_Object* list)
    : m_list(list),
      m_drawing(DrawingOfPopupAround(list)),
      m_scale(elm_config_scale_get()),
      m_beforeWait(ecore_idle_enterer_before_add(OnBeforeWait, this)),
      m_release(EventHandler::Behind(ECORE_EVENT_KEY_UP, OnRelease, this)),
      m_news(list) {
    evas_object_smart_callback_add(list, "theme,changed", OnThemeChanged, this);
    Used();
    RowsChanged();
}

ListPanel::~ListPanel() {
    ecore_idle_enterer_del(m_beforeWait);
    Stop(m_note);
    Stop(m_settling);
    evas_object_smart_callback_del_full(m_list, "theme,changed", OnThemeChanged, this);
}

void ListPanel::Restart(Ecore_Timer*& timer, double seconds, Ecore_Task_Cb callback,
                        const ListPanel* panel) {
    Stop(timer);
    timer = ecore_timer_add(seconds, callback, panel);
}

void ListPanel::Stop(Ecore_Timer*& timer) {
    if (timer != nullptr) {
        ecore_timer_del(std::exchange(timer, nullptr));
    }
}

void ListPanel::Update() {
    const Elm_Object_Item* focused = elm_object_focused_item_get(m_list);
    const int count = static_cast<int>(elm_genlist_items_count(m_list));
    // The toolkit counts rows from 1, so 0 stands for no focused row.
    const int position = focused != nullptr ? elm_genlist_item_index_get(focused) : 0;
    const int before = std::exchange(m_count, count);
    if (std::exchange(m_position, position) != position || before != count) {
        ShowCount();
    }
    // A renamed item gets another row, so the count may be the same.
    const bool placed = std::exchange(m_placed, false) && NewsListener::Any();
    if (before != count || placed) {
        RowsChanged();
    }
    m_news.Update(m_awaitsCorrection ? nullptr : focused, position, count);
}

// The timer only restarts for an empty list, so that rows which are added all the time do not
// postpone the message.
void ListPanel::RowsChanged() {
    if (m_count == 0 || m_settling == nullptr) {
        Restart(m_settling, SETTLE_SECONDS, OnTimer<&ListPanel::Settle>, this);
    }
    if (m_count != 0 && std::exchange(m_emptyShown, false)) {
        SetText("applist.empty", "");
    }
}

void ListPanel::Redraw() {
    ShowCount();
    SetText("applist.empty", m_emptyShown ? i18n_get_text("LIST_EMPTY") : "");
    if (m_noteShown) {
        DrawNote();
    }
}

// The program calculates the minimum size once, for the screen on which the list opens. On a lower
// screen it would be larger than the theme's list.
void ListPanel::Rescale() {
    const double change = elm_config_scale_get() / std::exchange(m_scale, elm_config_scale_get());
    const Evas_Object* table = elm_object_parent_widget_get(m_list);
    if (elm_object_widget_type_get(table) != std::string_view("Elm_Table")) {
        return;
    }
    // The object that has the minimum size shares the list's cell.
    Evas_Object* floor = elm_table_child_get(table, 0, 0);
    int width = 0;
    int height = 0;
    evas_object_size_hint_min_get(floor, &width, &height);
    evas_object_size_hint_min_set(floor, static_cast<int>(width * change),
                                  static_cast<int>(height * change));
}

void ListPanel::ShowCount() {
    SetText("applist.count", m_position > 0 ? PositionText(m_position, m_count) : "");
}

void ListPanel::Used() {
    if (std::exchange(m_noteShown, false)) {
        m_news.Withdraw();
        if (m_drawing != nullptr) {
            edje_object_signal_emit(m_drawing, "applist,note,hidden", "applist");
        }
    }
    // The note is visible during the last NOTE_SECONDS before the list closes.
    Restart(m_note, OPEN_SECONDS - NOTE_SECONDS, OnTimer<&ListPanel::ShowNote>, this);
}

void ListPanel::Released(const Ecore_Event_Key& key) {
    constexpr std::array<std::string_view, 4> RESTARTING{"Up", "Down", "Left", "Right"};
    if (std::find(RESTARTING.begin(), RESTARTING.end(), key.key) != RESTARTING.end()) {
        Used();
    }
}

void ListPanel::ShowNote() {
    // The toolkit deletes an expired timer itself, so Stop() must not delete it again.
    m_note = nullptr;
    m_noteShown = true;
    DrawNote();
    m_news.Hold(i18n_get_text("LIST_CLOSES"));
}

void ListPanel::DrawNote() const {
    SetText("applist.note", i18n_get_text("LIST_CLOSES"));
    if (m_drawing != nullptr) {
        edje_object_signal_emit(m_drawing, "applist,note,visible", "applist");
    }
}

void ListPanel::Settle() {
    // As in ShowNote(): the toolkit deletes the expired timer.
    m_settling = nullptr;
    // The next update counts rows that have come since the last one.
    if (m_count == 0 && elm_genlist_items_count(m_list) == 0) {
        m_emptyShown = true;
        SetText("applist.empty", i18n_get_text("LIST_EMPTY"));
        m_news.Hold(i18n_get_text("LIST_EMPTY"));
    }
    m_news.Settled(m_count);
}

void ListPanel::SetText(const char* part, const std::string& text) const {
    // The drawing is null if the list is not inside a popup.
    if (m_drawing != nullptr) {
        edje_object_part_text_set(m_drawing, part, text.c_str());
    }
}

}  // namespace applist::desktop
