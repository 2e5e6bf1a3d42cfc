// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "display/WrapAround.h"

#include <Elementary.h>
#include <string_view>

#include "CallbackGuard.h"

namespace applist::desktop {
namespace {

using Step = Elm_Object_Item* (*)(const Elm_Object_Item*);

constexpr unsigned int ANY_MODIFIER = ECORE_EVENT_MODIFIER_SHIFT | ECORE_EVENT_MODIFIER_CTRL |
                                      ECORE_EVENT_MODIFIER_ALT | ECORE_EVENT_MODIFIER_WIN |
                                      ECORE_EVENT_MODIFIER_ALTGR;

void OnJob(void* wrapAround) {
    GuardCallback([wrapAround] { static_cast<WrapAround*>(wrapAround)->Finish(); });
}

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

// The row at the other end of the list when the focus stands at the end that the key leads over;
// else null.
Elm_Object_Item* OtherEnd(const Evas_Object* list, bool up) {
    Elm_Object_Item* top = Focusable(elm_genlist_first_item_get(list), elm_genlist_item_next_get);
    Elm_Object_Item* bottom = Focusable(elm_genlist_last_item_get(list), elm_genlist_item_prev_get);
    const Elm_Object_Item* end = up ? top : bottom;
    Elm_Object_Item* other = up ? bottom : top;
    const bool leads = end != nullptr && end != other && elm_object_item_focus_get(end) != 0;
    return leads ? other : nullptr;
}

}  // namespace

WrapAround::~WrapAround() {
    if (m_job != nullptr) {
        ecore_job_del(m_job);
    }
}

bool WrapAround::Press(const Ecore_Event_Key& key) {
    const std::string_view name = key.key;
    if ((name != "Up" && name != "Down") || (key.modifiers & ANY_MODIFIER) != 0) {
        return false;
    }
    const Evas_Object* list = FocusedLoopingList(m_windows.Find(key.window));
    Elm_Object_Item* other = list != nullptr ? OtherEnd(list, name == "Up") : nullptr;
    if (other == nullptr) {
        return false;
    }
    // A row out of sight is no widget yet, and the focus would get lost on it. It becomes one here,
    // and the toolkit's focus learns of it before the job.
    elm_genlist_item_show(other, ELM_GENLIST_ITEM_SCROLLTO_IN);
    evas_smart_objects_calculate(evas_object_evas_get(list));
    m_window = key.window;
    m_up = name == "Up";
    if (m_job == nullptr) {
        m_job = ecore_job_add(OnJob, this);
    }
    return true;
}

// Looks everything up again: rows may have gone since.
void WrapAround::Finish() {
    m_job = nullptr;
    const Evas_Object* list = FocusedLoopingList(m_windows.Find(m_window));
    if (Elm_Object_Item* other = list != nullptr ? OtherEnd(list, m_up) : nullptr) {
        elm_object_item_focus_set(other, EINA_TRUE);
    }
}

}  // namespace applist::desktop
