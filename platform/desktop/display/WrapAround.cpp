// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "display/WrapAround.h"

#include <string_view>

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
    Evas_Object* focused = elm_object_focused_object_get(window);
    const char* type = focused != nullptr ? elm_object_widget_type_get(focused) : nullptr;
    const bool looping = type != nullptr && std::string_view(type) == "Elm_Genlist" &&
                         elm_object_scroll_item_loop_enabled_get(focused) != 0;
    return looping ? focused : nullptr;
}

}  // namespace

bool WrapAround(const Evas_Object* window, const Ecore_Event_Key& press) {
    const std::string_view key = press.key;
    if ((key != "Up" && key != "Down") || (press.modifiers & ANY_MODIFIER) != 0) {
        return false;
    }
    Evas_Object* list = FocusedLoopingList(window);
    if (list == nullptr) {
        return false;
    }
    Elm_Object_Item* top = Focusable(elm_genlist_first_item_get(list), elm_genlist_item_next_get);
    Elm_Object_Item* bottom = Focusable(elm_genlist_last_item_get(list), elm_genlist_item_prev_get);
    Elm_Object_Item* end = key == "Up" ? top : bottom;
    Elm_Object_Item* otherEnd = key == "Up" ? bottom : top;
    if (end == nullptr || end == otherEnd || elm_object_item_focus_get(end) == 0) {
        return false;
    }
    elm_genlist_item_show(otherEnd, ELM_GENLIST_ITEM_SCROLLTO_IN);
    elm_object_item_focus_set(otherEnd, EINA_TRUE);
    return true;
}

}  // namespace applist::desktop
