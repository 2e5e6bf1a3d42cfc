// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// bare-popup ROWS: only the toolkit's popup with a list in it. Comparing with it shows which part
// of the application's cost is the toolkit's.
#include <Elementary.h>
#include <cstdlib>
#include <cstring>

#include "row-name.h"

namespace {

char* Label(void* row, Evas_Object* /*list*/, const char* part) {
    if (std::strcmp(part, "elm.text") != 0) {
        return nullptr;
    }
    char name[32];
    write_row_name(name, static_cast<int>(reinterpret_cast<intptr_t>(row)));
    return strdup(name);
}

void Fill(Evas_Object* list, int rows) {
    Elm_Genlist_Item_Class* itemClass = elm_genlist_item_class_new();
    itemClass->item_style = "default";
    itemClass->func.text_get = Label;
    for (intptr_t row = 0; row < rows; ++row) {
        elm_genlist_item_append(list, itemClass, reinterpret_cast<void*>(row), nullptr,
                                ELM_GENLIST_ITEM_NONE, nullptr, nullptr);
    }
    elm_genlist_item_class_free(itemClass);
}

}  // namespace

EAPI_MAIN int elm_main(int argc, char** argv) {
    // Do not wait for a window manager or for the desktop's icon cache, which are not measured.
    elm_config_agressive_withdrawn_set(EINA_FALSE);
    elm_policy_set(ELM_POLICY_QUIT, ELM_POLICY_QUIT_LAST_WINDOW_CLOSED);
    Evas_Object* window = elm_win_util_standard_add("bare-popup", "bare-popup");
    evas_object_resize(window, 1920, 1080);
    Evas_Object* popup = elm_popup_add(window);
    elm_object_part_text_set(popup, "title,text", "bare popup");
    Evas_Object* list = elm_genlist_add(popup);
    evas_object_size_hint_min_set(list, 300, 425);
    Fill(list, argc > 1 ? std::atoi(argv[1]) : 10);
    elm_object_content_set(popup, list);
    evas_object_show(list);
    evas_object_show(popup);
    evas_object_show(window);
    elm_object_focus_set(list, EINA_TRUE);
    elm_run();
    return 0;
}
ELM_MAIN()
