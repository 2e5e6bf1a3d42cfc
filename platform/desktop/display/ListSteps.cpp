// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "display/ListSteps.h"

#include <Elementary.h>
#include <string_view>

#include "CallbackGuard.h"

namespace applist::desktop {
namespace {

using Step = Elm_Object_Item* (*)(const Elm_Object_Item*);

constexpr unsigned int ANY_MODIFIER = ECORE_EVENT_MODIFIER_SHIFT | ECORE_EVENT_MODIFIER_CTRL |
                                      ECORE_EVENT_MODIFIER_ALT | ECORE_EVENT_MODIFIER_WIN |
                                      ECORE_EVENT_MODIFIER_ALTGR;

// The first row from here on that can take the focus, or null.
Elm_Object_Item* Focusable(Elm_Object_Item* row, Step next) {
    while (row != nullptr && elm_object_item_disabled_get(row) != 0) {
        row = next(row);
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

// The row that the key leads to from row, round the end where there is none; null where row is the
// only one.
Elm_Object_Item* Target(const Evas_Object* list, const Elm_Object_Item* row, bool up) {
    const Step next = up ? elm_genlist_item_prev_get : elm_genlist_item_next_get;
    Elm_Object_Item* target = Focusable(next(row), next);
    if (target == nullptr) {
        target = Focusable(up ? elm_genlist_last_item_get(list) : elm_genlist_first_item_get(list),
                           next);
    }
    return target != row ? target : nullptr;
}

bool IsReal(const Evas_Object* list, const Elm_Object_Item* row) {
    Eina_List* rows = elm_genlist_realized_items_get(list);
    const bool real = eina_list_data_find(rows, row) != nullptr;
    eina_list_free(rows);
    return real;
}

// A row out of sight is no widget yet, and the focus would get lost on it.
void MakeReal(const Evas_Object* list, Elm_Object_Item* row) {
    elm_genlist_item_show(row, ELM_GENLIST_ITEM_SCROLLTO_IN);
    evas_smart_objects_calculate(evas_object_evas_get(list));
}

}  // namespace

bool ListSteps::Press(const Ecore_Event_Key& key) {
    const std::string_view name = key.key;
    const bool vertical = name == "Up" || name == "Down";
    if ((!vertical && name != "Left" && name != "Right") || (key.modifiers & ANY_MODIFIER) != 0) {
        return false;
    }
    const Evas_Object* list = FocusedLoopingList(m_windows.Find(key.window));
    if (list == nullptr) {
        return false;
    }
    if (vertical) {
        Step(list, name == "Up");
    }
    return true;
}

void ListSteps::Step(const Evas_Object* list, bool up) {
    const Elm_Object_Item* row = elm_object_focused_item_get(list);
    Elm_Object_Item* target = row != nullptr ? Target(list, row, up) : nullptr;
    if (target == nullptr) {
        return;
    }
    if (!IsReal(list, target)) {
        MakeReal(list, target);
    }
    elm_object_item_focus_set(target, EINA_TRUE);
}

}  // namespace applist::desktop
