// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "toolkit-internals/AccessibilityBridge.h"

#include <Elementary.h>
#include <dlfcn.h>

#include "CallbackGuard.h"

// Elementary.h does not include this header.
extern "C" {
#include <efl_access_object.eo.h>
}

namespace applist::desktop {
namespace {

void VisitBelow(Evas_Object* object, bool (*visit)(Evas_Object*)) {
    if (!visit(object)) {
        return;
    }
    Eina_List* children = efl_access_object_access_children_get(object);
    for (Eina_List* each = children; each != nullptr; each = eina_list_next(each)) {
        VisitBelow(static_cast<Evas_Object*>(eina_list_data_get(each)), visit);
    }
    // The list belongs to the caller, the objects in it do not.
    eina_list_free(children);
}

// Called for every accessibility event of every object, so it returns early for most of them.
void OnEvent(void* watch, const Efl_Event* event) {
    if (event->desc != EFL_ACCESS_OBJECT_EVENT_CHILDREN_CHANGED) {
        return;
    }
    const auto* change = static_cast<Efl_Access_Event_Children_Changed_Data*>(event->info);
    if (change->is_added != 0) {
        GuardCallback(
            [&] { static_cast<const AdditionWatch*>(watch)->Added(event->object, change->child); });
    }
}

}  // namespace

void SetSpokenName(Evas_Object* object, const std::string& name) {
    efl_access_object_i18n_name_set(object, name.c_str());
}

bool IsNotification(const Evas_Object* object) {
    return efl_access_object_role_get(object) == EFL_ACCESS_ROLE_NOTIFICATION;
}

// The toolkit does not report the new name itself, and a reader keeps the old one.
void ReportNewName(Evas_Object* notification) {
    efl_access_object_event_emit(notification, EFL_ACCESS_OBJECT_EVENT_PROPERTY_CHANGED,
                                 const_cast<char*>("i18n_name"));
}

// A reader speaks a notification's name when the object is reported as shown.
void SpeakNotification(Evas_Object* object) {
    const char* name = IsNotification(object) ? efl_access_object_i18n_name_get(object) : nullptr;
    if (name != nullptr && *name != '\0') {
        efl_access_state_changed_signal_emit(object, EFL_ACCESS_STATE_TYPE_SHOWING, EINA_TRUE);
    }
}

void VisitAccessibleObjects(bool (*visit)(Evas_Object* object)) {
    VisitBelow(efl_access_object_access_root_get(), visit);
}

AdditionWatch::AdditionWatch(Function added)
    : m_added(added), m_handler(efl_access_object_event_handler_add(OnEvent, this)) {}

AdditionWatch::~AdditionWatch() {
    efl_access_object_event_handler_del(m_handler);
}

}  // namespace applist::desktop

namespace applist::desktop {
namespace {

using AddFilter = decltype(&ecore_event_filter_add);

bool g_keep = false;

// The most recently added filter. The toolkit adds only one, that of its accessibility bridge.
Ecore_Filter_Cb g_filter = nullptr;

Eina_Bool SeeAndPassOn(void* data, void* loopData, int type, void* event) {
    g_filter(data, loopData, type, event);
    return EINA_TRUE;
}

AddFilter Original() {
    return reinterpret_cast<AddFilter>(dlsym(RTLD_NEXT, "ecore_event_filter_add"));
}

}  // namespace

void KeepFilteredEvents() {
    g_keep = true;
    g_filter = nullptr;
}

bool FilterWasAdded() {
    return g_filter != nullptr;
}

}  // namespace applist::desktop

// Replaces the library's function, because the dynamic linker resolves symbols from the program
// first.
extern "C" Ecore_Event_Filter* ecore_event_filter_add(Ecore_Data_Cb start, Ecore_Filter_Cb filter,
                                                      Ecore_End_Cb end, const void* data) {
    using namespace applist::desktop;
    if (g_keep) {
        g_filter = filter;
        filter = SeeAndPassOn;
    }
    return Original()(start, filter, end, data);
}
