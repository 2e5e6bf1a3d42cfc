// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "display/PreparedWindow.h"

#include <Ecore_Evas.h>
#include <Elementary.h>
#include <cstring>

#include "display/ScreenFit.h"
#include "i18n_text.h"
#include "toolkit-internals/FrameMemory.h"

namespace applist::desktop {
namespace {

constexpr const char* LETTERS =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZ abcdefghijklmnopqrstuvwxyz 0123456789 .,:-/&";

// The row's data is its text.
char* TextOf(void* text, Evas_Object*, const char* part) {
    return std::strcmp(part, "elm.text") == 0 ? strdup(static_cast<const char*>(text)) : nullptr;
}

Evas_Object* AddRows(Evas_Object* popup, const char* title) {
    Evas_Object* list = elm_genlist_add(popup);
    Elm_Genlist_Item_Class* kind = elm_genlist_item_class_new();
    kind->item_style = "1text_left_styleA";
    kind->func.text_get = TextOf;
    // The title is in the viewer's language, which may need other fonts than the letters.
    for (const char* text : {LETTERS, title}) {
        elm_genlist_item_append(list, kind, text, nullptr, ELM_GENLIST_ITEM_NONE, nullptr, nullptr);
    }
    elm_genlist_item_class_free(kind);
    evas_object_show(list);
    return list;
}

void DrawOnce(Evas_Object* window) {
    const char* title = i18n_get_text("TV_DATA_SERVICE_LIST");
    Evas_Object* popup = elm_popup_add(window);
    elm_object_part_text_set(popup, "title,text", title);
    elm_object_content_set(popup, AddRows(popup, title));
    evas_object_show(popup);
    Evas_Coord width = 0;
    Evas_Coord height = 0;
    evas_object_geometry_get(window, nullptr, nullptr, &width, &height);
    const Eina_Rectangle monitor = FirstMonitor();
    evas_object_resize(window, monitor.w, monitor.h);
    ecore_evas_manual_render(ecore_evas_ecore_evas_get(evas_object_evas_get(window)));
    evas_object_del(popup);
    evas_object_resize(window, width, height);
}

}  // namespace

Evas_Object* PrepareWindow(const std::string& name) {
    Evas_Object* window = elm_win_add(nullptr, name.c_str(), ELM_WIN_DIALOG_BASIC);
    if (window != nullptr) {
        // The letters are kept for one scale factor.
        FitToScreen(window);
        DrawOnce(window);
        // The frame was not the first one that the viewer sees.
        SetUpFrameMemory();
    }
    return window;
}

}  // namespace applist::desktop
