// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "app/Toolkit.h"

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
#include "display/PreparedWindow.h"
#include "display/Theme.h"
#include "display/WaylandScreen.h"
#include "list/ListFocus.h"
#include "toolkit-internals/DefaultTheme.h"
#include "toolkit-internals/FrameMemory.h"

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
    m_window = applist::desktop::PrepareWindow(name);
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
