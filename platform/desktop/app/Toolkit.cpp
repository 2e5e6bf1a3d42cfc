// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "app/Toolkit.h"

#include <Ecore_Evas.h>
#include <Ecore_X.h>
#include <Efreet.h>
#include <Elementary.h>
#include <cstdlib>
#include <cstring>
#include <string>
#include <utility>

#include <X11/Xlib.h>
#include <X11/extensions/Xext.h>

#include "Log.h"
#include "data/Text.h"
#include "display/Screen.h"
#include "display/Theme.h"
#include "i18n_text.h"
#include "list/ListFocus.h"
#include "toolkit-internals/FrameDrawing.h"
#include "toolkit-internals/ToolkitFiles.h"

namespace applist::desktop {
namespace {

// Xlib would print a message to standard error. The toolkit queries optional extensions that
// virtual displays lack.
int OnMissingExtension(Display*, const char* name, const char* reason) {
    LOG_DEBUG("X extension %s: %s", name, reason);
    return 0;
}

[[noreturn]] void ConnectionLost() {
    constexpr int DISPLAY_LOST = 101;
    LOG_ERROR("The connection to the X server is lost");
    std::exit(DISPLAY_LOST);
}

// Xlib calls this until the toolkit is connected. Xlib's default handler would exit with status 1.
int OnXlibConnectionLost(Display*) {
    ConnectionLost();
}

// Without this handler the toolkit exits silently if the X server closes the connection before the
// first window is created. Later the toolkit installs its own handler, which exits with the same
// status.
void OnConnectionLost(void*) {
    ConnectionLost();
}

// Returns true if the toolkit may draw with an engine for this window system.
bool MayUse(const char* windowSystem) {
    const char* engine = std::getenv("ELM_ENGINE");
    return engine == nullptr || std::strstr(engine, windowSystem) != nullptr;
}

bool NamesWayland() {
    return std::getenv("WAYLAND_DISPLAY") != nullptr || std::getenv("WAYLAND_SOCKET") != nullptr;
}

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

void Toolkit::SetEnvironment() {
    // Disables toolkit modules that watch power and time zone: a popup does not need them, and they
    // log errors on a set without a system bus.
    setenv("ECORE_NO_SYSTEM_MODULES", "1", 0);
    // Waking the render thread takes longer than drawing two rows. In addition, the program may
    // crash on a busy machine if Wayland resizes the window while a toolkit thread still draws a
    // frame.
    setenv("ECORE_EVAS_FORCE_SYNC_RENDER", "1", 0);
}

Toolkit::Toolkit(int argc, char** argv) {
    SetEnvironment();
    // The daemon that builds the cache would outlive the program.
    efreet_cache_disable();
    SetUpFrameMemory();
    XSetExtensionErrorHandler(OnMissingExtension);
    XSetIOErrorHandler(OnXlibConnectionLost);
    ecore_x_io_error_handler_set(OnConnectionLost, nullptr);
    const std::string theme = FindTheme();
    ReplaceDefaultTheme(theme);
    m_started = elm_init(argc, argv) > 0;
    if (!m_started) {
        LOG_ERROR("Cannot start the toolkit");
        return;
    }
    // Without a window manager a window keeps the state "withdrawn", and the toolkit does not draw
    // withdrawn windows.
    elm_config_agressive_withdrawn_set(EINA_FALSE);
    LoadTheme(theme);
    m_themeSwitch.emplace(theme, ListFocus::ThemeSwitched);
    elm_config_mirrored_set(TextRunsRightToLeft() ? EINA_TRUE : EINA_FALSE);
}

// Opens the toolkit's own connection to X, because the first window would report a failure with
// many lines and leave a program without a window. With this connection the toolkit prefers X11, so
// a Wayland display that the environment names is tried first.
bool Toolkit::Connect() {
    const bool wayland = MayUse("wayland");
    const bool x11 = MayUse("x11");
    if ((!wayland && !x11) || (wayland && NamesWayland() && WaylandAnswers())) {
        return true;
    }
    if (x11) {
        m_answers.emplace();
        m_connected = ecore_x_init(nullptr) > 0;
    }
    return m_connected || (wayland && WaylandAnswers());
}

void Toolkit::PrepareWindow(const std::string& name) {
    m_window = elm_win_add(nullptr, name.c_str(), ELM_WIN_DIALOG_BASIC);
    if (m_window != nullptr) {
        // The letters are kept for one scale factor.
        FitToScreen(m_window);
        DrawOnce(m_window);
        // The frame was not the first one that the viewer sees.
        SetUpFrameMemory();
    }
}

Evas_Object* Toolkit::TakeWindow(const std::string& name) {
    const bool same = m_window != nullptr && name == elm_win_name_get(m_window);
    return same ? std::exchange(m_window, nullptr) : nullptr;
}

Toolkit::~Toolkit() {
    if (m_window != nullptr) {
        evas_object_del(m_window);
    }
    m_themeSwitch.reset();
    m_answers.reset();
    if (m_connected) {
        ecore_x_shutdown();
    }
    if (m_started) {
        elm_shutdown();
    }
    efreet_cache_enable();
}

}  // namespace applist::desktop
