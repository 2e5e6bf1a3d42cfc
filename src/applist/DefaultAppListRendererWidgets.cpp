// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Creates the renderer's widgets: window, popup, genlist and row class.
#include <Elementary.h>

#include "Log.h"
#include "app.h"
#include "applist/DefaultAppListRenderer.h"
#include "i18n_text.h"
#include "list_focus.h"
#include "winset.h"

namespace {

constexpr int WINDOW_WIDTH = 1920;
constexpr int WINDOW_HEIGHT = 1080;
constexpr int LIST_MIN_WIDTH = 300;
constexpr int LIST_MIN_HEIGHT = 425;
// The number of the set theme's popup variant for lists.
constexpr int WINSET_LIST_POPUP = 220;

int Scaled(int length) {
    return static_cast<int>(length * elm_config_scale_get());
}

void SetExpand(Evas_Object* object) {
    evas_object_size_hint_weight_set(object, EVAS_HINT_EXPAND, EVAS_HINT_EXPAND);
}

void SetFill(Evas_Object* object) {
    evas_object_size_hint_align_set(object, EVAS_HINT_FILL, EVAS_HINT_FILL);
}

void SetWindowProperties(Evas_Object* window, const char* name) {
    elm_win_title_set(window, name);
    elm_win_alpha_set(window, EINA_TRUE);
    elm_win_prop_focus_skip_set(window, EINA_FALSE);
    elm_win_focus_highlight_style_set(window, "invisible");
    elm_win_focus_highlight_enabled_set(window, EINA_TRUE);
    elm_win_fullscreen_set(window, EINA_TRUE);
}

// The background is transparent, so that the broadcast is visible; it only resizes with the window.
void PlaceBackground(Evas_Object* background, Evas_Object* window) {
    evas_object_color_set(background, 0, 0, 0, 0);
    SetExpand(background);
    elm_win_resize_object_add(window, background);
    evas_object_show(background);
}

}  // namespace

bool DefaultAppListRenderer::Create() {
    m_window = CreateWindow(m_name.c_str());
    if (m_window == nullptr) {
        LOG_ERROR("add m_window failed");
        return false;
    }
    evas_object_show(AddPopupWindow(m_window));
    m_itemClass = CreateItemClass();
    // The list starts without rows; see list_focus.h.
    list_focus_set(m_genlist, nullptr);
    return true;
}

Evas_Object* DefaultAppListRenderer::CreateWindow(const char* name) {
    elm_config_focus_highlight_animate_set(EINA_TRUE);
    Evas_Object* window = app_get_preinitialized_window(name);
    if (window == nullptr) {
        window = elm_win_add(nullptr, name, ELM_WIN_DIALOG_BASIC);
    }
    if (window == nullptr) {
        LOG_ERROR("create window failed");
        return nullptr;
    }
    SetWindowProperties(window, name);

    m_background = elm_bg_add(window);
    if (m_background == nullptr) {
        // The window is not visible yet. The toolkit deletes it when it shuts down.
        LOG_ERROR("Creating background failed. Exiting...");
        return nullptr;
    }
    PlaceBackground(m_background, window);
    const int left = Scaled(0);
    const int top = Scaled(0);
    evas_object_move(window, left, top);
    evas_object_resize(window, WINDOW_WIDTH, WINDOW_HEIGHT);
    evas_object_show(window);
    return window;
}

Evas_Object* DefaultAppListRenderer::AddPopupWindow(Evas_Object* parent) {
    Evas_Object* popup = elm_popup_add(parent);
    elm_object_style_set(popup, "default");
    edje_object_message_send_to_winset(popup, WINSET_LIST_POPUP);
    elm_object_part_text_set(popup, "title,text", i18n_get_text("TV_DATA_SERVICE_LIST"));
    SetExpand(popup);
    SetFill(popup);
    const double scale = elm_config_scale_get();

    m_genlist = elm_genlist_add(popup);
    elm_object_scroll_item_loop_enabled_set(m_genlist, EINA_TRUE);
    evas_object_smart_callback_add(m_genlist, "item,focused", OnFocus, this);
    evas_object_smart_callback_add(m_genlist, "realized", OnRealized, this);
    evas_object_show(m_genlist);

    Evas_Object* table = WidgetMinSet(m_genlist, popup, static_cast<int>(LIST_MIN_WIDTH * scale),
                                      static_cast<int>(LIST_MIN_HEIGHT * scale));
    // The list may grow in height but must not widen the popup.
    evas_object_size_hint_weight_set(table, 0.0, EVAS_HINT_EXPAND);
    SetFill(table);
    evas_object_show(table);
    elm_object_part_content_set(popup, nullptr, table);
    evas_object_show(popup);
    return popup;
}

Evas_Object* DefaultAppListRenderer::WidgetMinSet(Evas_Object* obj, Evas_Object* parent, int w,
                                                  int h) {
    Evas_Object* table = elm_table_add(parent);
    // Invisible: it shares the cell with the widget and enforces the minimum size.
    Evas_Object* rectangle = evas_object_rectangle_add(evas_object_evas_get(table));
    evas_object_size_hint_min_set(rectangle, w, h);
    SetExpand(rectangle);
    SetFill(rectangle);
    elm_table_pack(table, rectangle, 0, 0, 1, 1);

    SetExpand(obj);
    SetFill(obj);
    elm_table_pack(table, obj, 0, 0, 1, 1);
    return table;
}

Elm_Genlist_Item_Class* DefaultAppListRenderer::CreateItemClass() {
    Elm_Genlist_Item_Class* itemClass = elm_genlist_item_class_new();
    if (itemClass == nullptr) {
        // The toolkit does not add rows without a class, so the list stays empty.
        LOG_ERROR("create item class failed");
        return nullptr;
    }
    itemClass->item_style = "1text_left_styleA";
    itemClass->func.text_get = ItemLabelGetFunction;
    itemClass->func.content_get = nullptr;
    itemClass->func.state_get = nullptr;
    itemClass->func.del = nullptr;
    return itemClass;
}
