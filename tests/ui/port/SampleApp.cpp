// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// A small application on the port with a window like the list's: transparent, full screen, a popup
// with rows. It reports events on standard output, one per line. Options:
//   --late-popup      leaves the window empty for its first frames
//   --no-window       does not create a window
//   --refuse          returns false from create
//   --exit-in WHERE   calls ui_app_exit() three times in "create" or "launch"
//   --elm-exit        ends the toolkit's loop directly in the first launch
//   --watch-bus       reports the loss of the session bus, and shortly after that it still runs
//   --no-ticks        stops the toolkit's frame clock from its first key on
//   --raw-keys        reports every key press before the port handles it
//   --complain        makes GLib, GLib's bus watches and the toolkit log one error each

#include <Elementary.h>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include <gio/gio.h>

#include "Log.h"
#include "app.h"
#include "launch/LaunchProtocol.h"

namespace {

constexpr const char* TITLE = "port-sample";
constexpr int ROWS = 3;

struct Sample {
    bool window = true;
    bool latePopup = false;
    bool refuse = false;
    bool elmExit = false;
    bool watchBus = false;
    bool complain = false;
    bool noTicks = false;
    bool rawKeys = false;
    std::string exitIn;

    Evas_Object* toplevel = nullptr;
    Evas_Object* list = nullptr;
    Elm_Genlist_Item_Class* rowClass = nullptr;
};

void ExitThrice() {
    ui_app_exit();
    ui_app_exit();
    ui_app_exit();
}

char* RowText(void* data, Evas_Object*, const char* part) {
    if (std::string_view(part) != "elm.text") {
        return nullptr;
    }
    static const std::vector<std::string> names{"Weather <b>&amp; News", "Election Night",
                                                "Teletext \xE5\xA4\xA9\xE6\xB0\x97"};
    const auto row = reinterpret_cast<uintptr_t>(data);
    return strdup((names[row % names.size()] + " " + std::to_string(row)).c_str());
}

void OnDismissed(void*, Evas_Object*, void*) {
    std::puts("dismissed");
}

void OnRowFocused(void*, Evas_Object*, void* row) {
    std::printf("focused %d\n", elm_genlist_item_index_get(static_cast<Elm_Object_Item*>(row)));
}

Eina_Bool StopTicks(void*, int, void*) {
    ecore_animator_source_set(ECORE_ANIMATOR_SOURCE_CUSTOM);
    return ECORE_CALLBACK_PASS_ON;
}

Eina_Bool OnRawKeyDown(void*, int, void* event) {
    std::printf("raw %s\n", static_cast<Ecore_Event_Key*>(event)->key);
    return ECORE_CALLBACK_PASS_ON;
}

void FocusRow(void* row) {
    elm_object_item_focus_set(static_cast<Elm_Object_Item*>(row), EINA_TRUE);
}

// Focuses the first row, once, as soon as it can take the focus.
void OnRowRealized(void*, Evas_Object* list, void* row) {
    if (row == elm_genlist_first_item_get(list)) {
        evas_object_smart_callback_del(list, "realized", OnRowRealized);
        ecore_job_add(FocusRow, row);
    }
}

Eina_Bool OnKeyDown(void*, int, void* event) {
    std::printf("press %s\n", static_cast<Ecore_Event_Key*>(event)->key);
    return ECORE_CALLBACK_PASS_ON;
}

// Right moves the focus on the key release, as in the list.
Eina_Bool OnKeyUp(void* data, int, void* event) {
    const auto* key = static_cast<Ecore_Event_Key*>(event);
    std::printf("key %s %s\n", key->key, key->keyname);
    const Evas_Object* list = static_cast<Sample*>(data)->list;
    Elm_Object_Item* row = list != nullptr ? elm_object_focused_item_get(list) : nullptr;
    row = row != nullptr ? elm_genlist_item_next_get(row) : nullptr;
    if (row != nullptr && std::string_view(key->key) == "Right") {
        elm_object_item_focus_set(row, EINA_TRUE);
    }
    return ECORE_CALLBACK_PASS_ON;
}

// Adds the rows only when the window has the focus, because applist's rows arrive after its window
// is shown, too.
void OnWindowFocused(void* data, Evas_Object* window, void*) {
    auto& sample = *static_cast<Sample*>(data);
    evas_object_smart_callback_del(window, "focus,in", OnWindowFocused);
    for (int row = 1; row <= ROWS; ++row) {
        elm_genlist_item_append(sample.list, sample.rowClass,
                                reinterpret_cast<void*>(static_cast<uintptr_t>(row)), nullptr,
                                ELM_GENLIST_ITEM_NONE, nullptr, nullptr);
    }
}

void AddList(Sample& sample, Evas_Object* popup) {
    Evas_Object* list = elm_genlist_add(popup);
    sample.list = list;
    elm_object_scroll_item_loop_enabled_set(list, EINA_TRUE);
    evas_object_smart_callback_add(list, "item,focused", OnRowFocused, nullptr);
    evas_object_smart_callback_add(list, "realized", OnRowRealized, nullptr);
    sample.rowClass = elm_genlist_item_class_new();
    sample.rowClass->item_style = "1text_left_styleA";
    sample.rowClass->func.text_get = RowText;
    evas_object_size_hint_weight_set(list, EVAS_HINT_EXPAND, EVAS_HINT_EXPAND);
    evas_object_size_hint_align_set(list, EVAS_HINT_FILL, EVAS_HINT_FILL);
    evas_object_size_hint_min_set(list, 300, 425);
    evas_object_show(list);
    elm_object_content_set(popup, list);
}

Eina_Bool ShowPopup(void* popup) {
    evas_object_show(static_cast<Evas_Object*>(popup));
    return ECORE_CALLBACK_CANCEL;
}

void BuildWindow(Sample& sample) {
    sample.toplevel = elm_win_add(nullptr, TITLE, ELM_WIN_DIALOG_BASIC);
    elm_win_title_set(sample.toplevel, TITLE);
    elm_win_alpha_set(sample.toplevel, EINA_TRUE);
    elm_win_focus_highlight_style_set(sample.toplevel, "invisible");
    elm_win_focus_highlight_enabled_set(sample.toplevel, EINA_TRUE);
    elm_win_fullscreen_set(sample.toplevel, EINA_TRUE);
    Evas_Object* background = elm_bg_add(sample.toplevel);
    evas_object_color_set(background, 0, 0, 0, 0);
    elm_win_resize_object_add(sample.toplevel, background);
    evas_object_show(background);
    evas_object_resize(sample.toplevel, 1920, 1080);
    evas_object_show(sample.toplevel);
    Evas_Object* popup = elm_popup_add(sample.toplevel);
    elm_object_part_text_set(popup, "title,text", "Data services");
    evas_object_smart_callback_add(popup, "dismissed", OnDismissed, nullptr);
    AddList(sample, popup);
    evas_object_smart_callback_add(sample.toplevel, "focus,in", OnWindowFocused, &sample);
    if (sample.latePopup) {
        ecore_timer_add(0.3, ShowPopup, popup);
    } else {
        evas_object_show(popup);
    }
}

void Complain() {
    g_bus_unwatch_name(4711);
    g_log("GLib-GIO", G_LOG_LEVEL_WARNING, "Invalid id 4711 passed to someone else");
    EINA_LOG_ERR("the toolkit complains");
    LOG_DEBUG("a debug line");
    LOG_INFO("an info line\n\n");
    LOG_ERROR("an error line\n\n");
}

Eina_Bool OnLater(void*) {
    std::puts("still here");
    return ECORE_CALLBACK_CANCEL;
}

void OnBusClosed(GDBusConnection*, gboolean, GError*, gpointer) {
    ecore_timer_add(0.1, OnLater, nullptr);
}

// This is the process' shared connection, which is never closed.
void WatchBus() {
    g_signal_connect(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr), "closed",
                     G_CALLBACK(OnBusClosed), nullptr);
}

bool Create(void* data) {
    auto& sample = *static_cast<Sample*>(data);
    std::puts("create");
    if (sample.refuse) {
        return false;
    }
    ecore_event_handler_add(ECORE_EVENT_KEY_DOWN, OnKeyDown, nullptr);
    ecore_event_handler_add(ECORE_EVENT_KEY_UP, OnKeyUp, &sample);
    if (sample.noTicks) {
        // Prepended, because keys that move the focus are not passed on.
        ecore_event_handler_prepend(ECORE_EVENT_KEY_DOWN, StopTicks, nullptr);
    }
    if (sample.rawKeys) {
        ecore_event_handler_prepend(ECORE_EVENT_KEY_DOWN, OnRawKeyDown, nullptr);
    }
    if (sample.window) {
        BuildWindow(sample);
    }
    if (sample.watchBus) {
        WatchBus();
    }
    if (sample.complain) {
        Complain();
    }
    if (sample.exitIn == "create") {
        ExitThrice();
    }
    return true;
}

void Terminate(void* data) {
    auto& sample = *static_cast<Sample*>(data);
    std::puts("terminate");
    if (sample.toplevel != nullptr) {
        evas_object_del(sample.toplevel);
        elm_genlist_item_class_free(sample.rowClass);
    }
}

void Pause(void*) {
    std::puts("pause");
}

void Resume(void*) {
    std::puts("resume");
}

void Launch(app_control_s* request, void* data) {
    auto& sample = *static_cast<Sample*>(data);
    std::string values;
    for (const auto& [key, value] : request->extraData) {
        values += " " + key + "=" + value;
    }
    std::printf("launch %s%s\n", request->appId.c_str(), values.c_str());
    if (sample.exitIn == "launch") {
        ExitThrice();
    }
    if (sample.elmExit) {
        elm_exit();
    }
}

Sample ParseArguments(int argc, char** argv) {
    Sample sample;
    for (int i = 1; i < argc; ++i) {
        const std::string_view option = argv[i];
        sample.window = sample.window && option != "--no-window";
        sample.latePopup = sample.latePopup || option == "--late-popup";
        sample.refuse = sample.refuse || option == "--refuse";
        sample.elmExit = sample.elmExit || option == "--elm-exit";
        sample.watchBus = sample.watchBus || option == "--watch-bus";
        sample.complain = sample.complain || option == "--complain";
        sample.rawKeys = sample.rawKeys || option == "--raw-keys";
        sample.noTicks = sample.noTicks || option == "--no-ticks";
        if (option == "--exit-in" && i + 1 < argc) {
            sample.exitIn = argv[++i];
        }
    }
    return sample;
}

}  // namespace

int main(int argc, char** argv) {
    setvbuf(stdout, nullptr, _IOLBF, 0);
    Sample sample = ParseArguments(argc, argv);
    ui_app_callbacks callbacks{Create, Terminate, Pause, Resume, Launch};
    ui_app_exit();
    const int result = ui_app_main(argc, argv, &callbacks, &sample);
    std::printf("result %d\n", result);
    return result == 0 ? 0 : 1;
}
