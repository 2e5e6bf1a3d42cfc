// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "accessibility/SpokenNames.h"

#include <Elementary.h>
#include <string>
#include <string_view>
#include <utility>

#include "CallbackGuard.h"
#include "accessibility/KeyFilter.h"
#include "display/ListPanel.h"
#include "i18n_text.h"

// Elementary.h does not include this header.
extern "C" {
#include <efl_access_object.eo.h>
}

namespace applist::desktop {
namespace {

// The toolkit asks only once for the address of the accessibility bus, with a timeout of 100 ms. On
// a busy machine that bus needs longer to start, so the connection is retried.
constexpr double RETRY_SECONDS = 1.0;

bool IsA(const Eo* object, std::string_view name) {
    return object != nullptr && efl_class_name_get(object) == name;
}

bool IsList(const Eo* object) {
    return IsA(object, "Elm.Genlist");
}

// The accessibility bus accepts valid UTF-8 only; other text makes the screen reader hang.
// RowText() is valid.
void NameRow(const Eo* list, Eo* row) {
    const std::string name = RowText(list, row);
    if (!name.empty()) {
        efl_access_object_i18n_name_set(row, name.c_str());
    }
}

// An empty list has the text that the panel shows instead of rows. A reader announces the change of
// the name of the object that it is on.
void NameList(Eo* list, bool empty) {
    std::string title = TitleOf(list);
    if (empty) {
        title += std::string(title.empty() ? "" : ". ") + i18n_get_text("LIST_EMPTY");
    }
    if (!title.empty()) {
        efl_access_object_i18n_name_set(list, title.c_str());
    }
}

void NameAll(Eo* list) {
    NameList(list, elm_genlist_first_item_get(list) == nullptr);
    for (Elm_Object_Item* row = elm_genlist_first_item_get(list); row != nullptr;
         row = elm_genlist_item_next_get(row)) {
        NameRow(list, row);
    }
}

// Names every list in the tree below object.
void NameListsIn(Eo* object) {
    if (IsList(object)) {
        NameAll(object);
        return;
    }
    Eina_List* children = efl_access_object_access_children_get(object);
    for (Eina_List* each = children; each != nullptr; each = eina_list_next(each)) {
        NameListsIn(static_cast<Eo*>(eina_list_data_get(each)));
    }
    // The list belongs to the caller, the objects in it do not.
    eina_list_free(children);
}

// Called for every accessibility event of every object, so it returns early for most of them.
void OnEvent(void*, const Efl_Event* event) {
    if (event->desc != EFL_ACCESS_OBJECT_EVENT_CHILDREN_CHANGED) {
        return;
    }
    const auto* change = static_cast<Efl_Access_Event_Children_Changed_Data*>(event->info);
    if (change->is_added != 0) {
        GuardCallback([&] { SpokenNames::RowAdded(event->object, change->child); });
    }
}

Eina_Bool OnRetry(void* names) {
    const bool again =
        GuardCallback(false, [names] { return static_cast<SpokenNames*>(names)->Retry(); });
    return again ? ECORE_CALLBACK_RENEW : ECORE_CALLBACK_CANCEL;
}

}  // namespace

void SpokenNames::Turn(bool on) {
    // m_additions is set while the names are on.
    if (on == (m_additions != nullptr)) {
        return;
    }
    if (on) {
        Connect();
        m_retry = ecore_timer_add(RETRY_SECONDS, OnRetry, this);
        // The rows that exist by now are not reported as additions any more.
        NameListsIn(efl_access_object_access_root_get());
        m_additions = efl_access_object_event_handler_add(OnEvent, nullptr);
    } else {
        elm_config_atspi_mode_set(EINA_FALSE);
        efl_access_object_event_handler_del(std::exchange(m_additions, nullptr));
        if (m_retry != nullptr) {
            ecore_timer_del(std::exchange(m_retry, nullptr));
        }
    }
}

void SpokenNames::Connect() {
    KeepFilteredEvents();
    elm_config_atspi_mode_set(EINA_TRUE);
}

bool SpokenNames::Retry() {
    if (FilterWasAdded()) {
        m_retry = nullptr;
        return false;
    }
    // The toolkit only connects when the mode changes from off to on.
    elm_config_atspi_mode_set(EINA_FALSE);
    Connect();
    return true;
}

// Without a screen reader the names are not used.
void SpokenNames::Emptied(Eo* list) const {
    if (m_additions != nullptr) {
        NameList(list, true);
    }
}

void SpokenNames::RowAdded(Eo* list, Eo* row) {
    if (IsList(list)) {
        NameRow(list, row);
        NameList(list, false);
    }
}

}  // namespace applist::desktop
