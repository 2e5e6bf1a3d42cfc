// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "accessibility/SpokenNames.h"

#include <Elementary.h>
#include <string>
#include <string_view>
#include <utility>

#include "CallbackGuard.h"
#include "list/ListPanel.h"
#include "toolkit-internals/KeyFilter.h"

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

void NameList(Eo* list) {
    const std::string title = TitleOf(list);
    if (!title.empty()) {
        efl_access_object_i18n_name_set(list, title.c_str());
    }
}

void NameAll(Eo* list) {
    NameList(list);
    for (Elm_Object_Item* row = elm_genlist_first_item_get(list); row != nullptr;
         row = elm_genlist_item_next_get(row)) {
        NameRow(list, row);
    }
}

// Calls body for every object in the tree below object, but not for the rows of lists.
void ForEachIn(Eo* object, void (*body)(Eo*)) {
    body(object);
    if (IsList(object)) {
        return;
    }
    Eina_List* children = efl_access_object_access_children_get(object);
    for (Eina_List* each = children; each != nullptr; each = eina_list_next(each)) {
        ForEachIn(static_cast<Eo*>(eina_list_data_get(each)), body);
    }
    // The list belongs to the caller, the objects in it do not.
    eina_list_free(children);
}

// A popup contains one object of this role, which does not have a name. A reader speaks its name
// when the object is reported as shown.
bool IsNotification(const Eo* object) {
    return efl_access_object_role_get(object) == EFL_ACCESS_ROLE_NOTIFICATION;
}

void SpeakNotification(Eo* object) {
    const char* message =
        IsNotification(object) ? efl_access_object_i18n_name_get(object) : nullptr;
    if (message != nullptr && *message != '\0') {
        efl_access_state_changed_signal_emit(object, EFL_ACCESS_STATE_TYPE_SHOWING, EINA_TRUE);
    }
}

Eina_Bool OnBridge(void*, int, void* event) {
    if (static_cast<const Elm_Event_Atspi_Bridge_State_Changed*>(event)->state ==
        ELM_ATSPI_BRIDGE_CONNECTED) {
        GuardCallback(SpokenNames::Repeat);
    }
    return ECORE_CALLBACK_PASS_ON;
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
        ForEachIn(efl_access_object_access_root_get(), [](Eo* object) {
            if (IsList(object)) {
                NameAll(object);
            }
        });
        m_connected = EventHandler::Behind(ELM_EVENT_ATSPI_BRIDGE_STATE_CHANGED, OnBridge, nullptr);
        m_additions = efl_access_object_event_handler_add(OnEvent, nullptr);
        m_news.emplace([](const News& news) {
            if (news.kind == News::Kind::MESSAGE) {
                Say(news.source, news.text);
            }
        });
    } else {
        m_news.reset();
        elm_config_atspi_mode_set(EINA_FALSE);
        m_connected = {};
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

void SpokenNames::Say(Eo* list, const std::string& message) {
    NameList(list);
    Eo* around = elm_object_parent_widget_get(list);
    while (around != nullptr && !IsNotification(around)) {
        around = elm_object_parent_widget_get(around);
    }
    if (around != nullptr) {
        efl_access_object_i18n_name_set(around, message.c_str());
        // The toolkit does not report the new name itself, and a reader keeps the old one.
        efl_access_object_event_emit(around, EFL_ACCESS_OBJECT_EVENT_PROPERTY_CHANGED,
                                     const_cast<char*>("i18n_name"));
        SpeakNotification(around);
    }
}

void SpokenNames::Repeat() {
    ForEachIn(efl_access_object_access_root_get(), SpeakNotification);
}

void SpokenNames::RowAdded(Eo* list, Eo* row) {
    if (IsList(list)) {
        NameRow(list, row);
        NameList(list);
    }
}

}  // namespace applist::desktop
