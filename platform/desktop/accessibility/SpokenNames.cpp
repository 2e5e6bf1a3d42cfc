// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "accessibility/SpokenNames.h"

#include <Elementary.h>
#include <string>
#include <string_view>
#include <utility>

#include "CallbackGuard.h"
#include "list/ListPanel.h"
#include "toolkit-internals/AccessibilityBridge.h"

namespace applist::desktop {
namespace {

// The toolkit asks only once for the address of the accessibility bus, with a timeout of 100 ms. On
// a busy machine that bus needs longer to start, so the connection is retried.
constexpr double RETRY_SECONDS = 1.0;

bool IsList(const Evas_Object* object) {
    return object != nullptr && efl_class_name_get(object) == std::string_view("Elm.Genlist");
}

// RowText() is valid UTF-8 even if the broadcast's name is not.
void NameRow(const Evas_Object* list, Evas_Object* row) {
    const std::string name = RowText(list, row);
    if (!name.empty()) {
        SetSpokenName(row, name);
    }
}

void NameList(Evas_Object* list) {
    const std::string title = TitleOf(list);
    if (!title.empty()) {
        SetSpokenName(list, title);
    }
}

// The rows of a list are not visited, because they have their names by then.
bool NameIfList(Evas_Object* object) {
    const bool isList = IsList(object);
    if (isList) {
        NameList(object);
        for (Elm_Object_Item* row = elm_genlist_first_item_get(object); row != nullptr;
             row = elm_genlist_item_next_get(row)) {
            NameRow(object, row);
        }
    }
    return !isList;
}

Eina_Bool OnBridge(void*, int, void* event) {
    if (static_cast<const Elm_Event_Atspi_Bridge_State_Changed*>(event)->state ==
        ELM_ATSPI_BRIDGE_CONNECTED) {
        GuardCallback(SpokenNames::Repeat);
    }
    return ECORE_CALLBACK_PASS_ON;
}

Eina_Bool OnRetry(void* names) {
    const bool again =
        GuardCallback(false, [names] { return static_cast<SpokenNames*>(names)->Retry(); });
    return again ? ECORE_CALLBACK_RENEW : ECORE_CALLBACK_CANCEL;
}

}  // namespace

void SpokenNames::Turn(bool on) {
    // m_additions is set while the names are on.
    if (on == m_additions.has_value()) {
        return;
    }
    if (on) {
        Connect();
        m_retry = ecore_timer_add(RETRY_SECONDS, OnRetry, this);
        // The rows that exist by now are not reported as additions any more.
        VisitAccessibleObjects(NameIfList);
        m_connected = EventHandler::Behind(ELM_EVENT_ATSPI_BRIDGE_STATE_CHANGED, OnBridge, nullptr);
        m_additions.emplace(RowAdded);
        // A reader finds out by itself which row has the focus.
        m_news.emplace([](const News& news) {
            if (news.kind == News::Kind::MESSAGE) {
                Say(news.source, news.text);
            }
        });
    } else {
        m_news.reset();
        elm_config_atspi_mode_set(EINA_FALSE);
        m_connected = {};
        m_additions.reset();
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

void SpokenNames::Say(Evas_Object* list, const std::string& message) {
    // A list without rows has not been reported to RowAdded().
    NameList(list);
    Evas_Object* around = elm_object_parent_widget_get(list);
    while (around != nullptr && !IsNotification(around)) {
        around = elm_object_parent_widget_get(around);
    }
    if (around != nullptr) {
        SetSpokenName(around, message);
        ReportNewName(around);
        SpeakNotification(around);
    }
}

void SpokenNames::Repeat() {
    VisitAccessibleObjects([](Evas_Object* object) {
        SpeakNotification(object);
        return !IsList(object);
    });
}

void SpokenNames::RowAdded(Evas_Object* list, Evas_Object* row) {
    if (IsList(list)) {
        NameRow(list, row);
        NameList(list);
    }
}

}  // namespace applist::desktop
