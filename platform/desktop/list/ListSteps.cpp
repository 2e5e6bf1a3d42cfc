// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "list/ListSteps.h"

#include <Elementary.h>
#include <string_view>

#include "CallbackGuard.h"
#include "list/ListFocus.h"

namespace applist::desktop {
namespace {

using Neighbour = Elm_Object_Item* (*)(const Elm_Object_Item*);

constexpr unsigned int ANY_MODIFIER = ECORE_EVENT_MODIFIER_SHIFT | ECORE_EVENT_MODIFIER_CTRL |
                                      ECORE_EVENT_MODIFIER_ALT | ECORE_EVENT_MODIFIER_WIN |
                                      ECORE_EVENT_MODIFIER_ALTGR;

Neighbour Towards(bool up) {
    return up ? elm_genlist_item_prev_get : elm_genlist_item_next_get;
}

// Returns the first row, starting with row itself, that can take the focus, or null.
Elm_Object_Item* Focusable(Elm_Object_Item* row, bool up) {
    while (row != nullptr && elm_object_item_disabled_get(row) != 0) {
        row = Towards(up)(row);
    }
    return row;
}

Evas_Object* FocusedLoopingList(const Evas_Object* window) {
    Evas_Object* focused = window != nullptr ? elm_object_focused_object_get(window) : nullptr;
    const char* type = focused != nullptr ? elm_object_widget_type_get(focused) : nullptr;
    const bool looping = type != nullptr && std::string_view(type) == "Elm_Genlist" &&
                         elm_object_scroll_item_loop_enabled_get(focused) != 0;
    return looping ? focused : nullptr;
}

// Returns the next row that can take the focus. After the last row, or if row is null, continues at
// the other end of the list.
Elm_Object_Item* StepTarget(const Evas_Object* list, const Elm_Object_Item* row, bool up) {
    Elm_Object_Item* next = row != nullptr ? Focusable(Towards(up)(row), up) : nullptr;
    if (next != nullptr) {
        return next;
    }
    return Focusable(up ? elm_genlist_last_item_get(list) : elm_genlist_first_item_get(list), up);
}

// Returns how many rows fit into the visible part; all rows have the same height.
int RowsInView(const Evas_Object* list) {
    int viewHeight = 0;
    int listHeight = 0;
    elm_scroller_region_get(list, nullptr, nullptr, nullptr, &viewHeight);
    elm_scroller_child_size_get(list, nullptr, &listHeight);
    const int rows = static_cast<int>(elm_genlist_items_count(list));
    return listHeight > 0 ? rows * viewHeight / listHeight : 1;
}

// Returns the row one page after row, or the last one that can take the focus.
Elm_Object_Item* PageTarget(const Evas_Object* list, Elm_Object_Item* row, bool up) {
    if (row == nullptr) {
        return StepTarget(list, row, up);
    }
    Elm_Object_Item* target = row;
    const int rows = RowsInView(list);
    for (int steps = 0; steps < rows && row != nullptr; ++steps) {
        target = row;
        row = Focusable(Towards(up)(row), up);
    }
    return row != nullptr ? row : target;
}

// The focus would get lost on a row that is not a widget yet, as are the rows out of sight. The
// list scrolls by its last layout, which must include all changes.
void Realize(const Evas_Object* list, Elm_Object_Item* row) {
    Evas* canvas = evas_object_evas_get(list);
    evas_smart_objects_calculate(canvas);
    elm_genlist_item_show(row, ELM_GENLIST_ITEM_SCROLLTO_IN);
    evas_smart_objects_calculate(canvas);
}

Eina_Bool OnPress(void* steps, int, void* key) {
    const bool taken = GuardCallback(false, [&] {
        return static_cast<ListSteps*>(steps)->Press(*static_cast<const Ecore_Event_Key*>(key));
    });
    return taken ? ECORE_CALLBACK_DONE : ECORE_CALLBACK_PASS_ON;
}

}  // namespace

ListSteps::ListSteps(Windows& windows)
    : m_windows(windows), m_press(EventHandler::InFront(ECORE_EVENT_KEY_DOWN, OnPress, this)) {}

bool ListSteps::Press(const Ecore_Event_Key& key) {
    const std::string_view name = key.key;
    const bool step = name == "Up" || name == "Down";
    const bool page = name == "Prior" || name == "Next";
    const bool sideways = name == "Left" || name == "Right";
    // With a modifier the key belongs to the toolkit.
    if ((!step && !page && !sideways) || (key.modifiers & ANY_MODIFIER) != 0) {
        return false;
    }
    const Evas_Object* list = FocusedLoopingList(m_windows.Find(key.window));
    if (list == nullptr) {
        return false;
    }
    Elm_Object_Item* row = elm_object_focused_item_get(list);
    if (step) {
        Focus(list, StepTarget(list, row, name == "Up"));
    } else if (page) {
        Focus(list, PageTarget(list, row, name == "Prior"));
    }
    return true;
}

void ListSteps::Focus(const Evas_Object* list, Elm_Object_Item* row) {
    if (row == nullptr) {
        return;
    }
    // Realize() lays out the canvas twice, which a visible row does not need.
    if (!ListFocus::IsRealized(list, row)) {
        Realize(list, row);
    }
    elm_object_item_focus_set(row, EINA_TRUE);
}

}  // namespace applist::desktop
