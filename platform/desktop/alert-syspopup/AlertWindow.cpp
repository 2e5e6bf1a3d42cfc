// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "alert-syspopup/AlertWindow.h"

#include <Elementary.h>
#include <cstdlib>

#include "CallbackGuard.h"
#include "i18n_text.h"
#include "list/News.h"
#include "toolkit-internals/ShownText.h"

namespace applist::desktop {
namespace {

// The toolkit parses the text of theme parts as markup, so plain text must be escaped.
void SetText(Evas_Object* panel, const char* part, const char* text) {
    char* markup = elm_entry_utf8_to_markup(text);
    elm_layout_text_set(panel, part, markup);
    std::free(markup);
}

const char* TitleOf(Alert::Kind kind) {
    return kind == Alert::Kind::UNAVAILABLE ? i18n_get_text("ALERT_TITLE_UNAVAILABLE")
                                            : i18n_get_text("ALERT_TITLE_NOTIFICATION");
}

const char* SignalOf(Alert::Kind kind) {
    return kind == Alert::Kind::UNAVAILABLE ? "elm,state,unavailable" : "elm,state,notification";
}

void OnThemeChanged(void* window, Evas_Object*, void*) {
    GuardCallback([window] { static_cast<AlertWindow*>(window)->ShowKind(); });
}

}  // namespace

std::optional<Alert> ReadAlert(const app_control_s& request) {
    Alert alert;
    for (const auto& [key, value] : request.extraData) {
        if (key == "text") {
            alert.text = value;
        } else if (key == "type" && value == "unavailable") {
            alert.kind = Alert::Kind::UNAVAILABLE;
        }
    }
    return alert.text.empty() ? std::nullopt : std::optional(alert);
}

std::unique_ptr<AlertWindow> AlertWindow::Create(const char* title) {
    Evas_Object* window = elm_win_add(nullptr, title, ELM_WIN_DIALOG_BASIC);
    if (window == nullptr) {
        return nullptr;
    }
    elm_win_title_set(window, title);
    // The broadcast stays visible around the panel.
    elm_win_alpha_set(window, EINA_TRUE);
    elm_win_fullscreen_set(window, EINA_TRUE);
    return std::unique_ptr<AlertWindow>(new AlertWindow(window));
}

// The table fills the window and centres the panel at its minimum size.
AlertWindow::AlertWindow(Evas_Object* window) : m_window(window), m_panel(elm_layout_add(window)) {
    elm_layout_theme_set(m_panel, "layout", "alert", "default");
    evas_object_smart_callback_add(m_panel, "theme,changed", OnThemeChanged, this);
    SetText(m_panel, "elm.text.hint", i18n_get_text("ALERT_CLOSE_HINT"));
    Evas_Object* table = elm_table_add(window);
    evas_object_size_hint_weight_set(table, EVAS_HINT_EXPAND, EVAS_HINT_EXPAND);
    elm_table_pack(table, m_panel, 0, 0, 1, 1);
    elm_win_resize_object_add(window, table);
    evas_object_show(table);
}

// Also deletes the objects in the window.
AlertWindow::~AlertWindow() {
    evas_object_del(m_window);
}

void AlertWindow::Show(const Alert& alert) {
    m_kind = alert.kind;
    SetText(m_panel, "elm.text.title", TitleOf(alert.kind));
    SetText(m_panel, "elm.text", alert.text.c_str());
    ShowKind();
    evas_object_show(m_panel);
    evas_object_show(m_window);
    elm_win_raise(m_window);
    TellNews({News::Kind::ALERT, m_panel, TitleOf(alert.kind), SpokenText(alert.text.c_str())});
}

void AlertWindow::ShowKind() {
    elm_layout_signal_emit(m_panel, SignalOf(m_kind), "elm");
    elm_layout_sizing_eval(m_panel);
}

}  // namespace applist::desktop
