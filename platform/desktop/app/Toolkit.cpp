// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "app/Toolkit.h"

#include <Ecore_X.h>
#include <Efreet.h>
#include <Elementary.h>
#include <cstdlib>
#include <cstring>

#include <X11/Xlib.h>
#include <X11/extensions/Xext.h>

#include "Log.h"
#include "display/SharedMemory.h"
#include "display/WaylandScreen.h"
#include "text/Text.h"
#include "theme/Theme.h"

namespace applist::desktop {
namespace {

// Xlib would print these to standard error: the toolkit asks for extensions that it can do without
// and that virtual displays do not have.
int OnMissingExtension(Display*, const char* name, const char* reason) {
    LOG_DEBUG("X extension %s: %s", name, reason);
    return 0;
}

// The modules that watch power and time zone report errors for a set without a system bus, and are
// of no use to a popup. The cache of desktop files would be built by a daemon that outlives us.
void KeepOutHelpers() {
    setenv("ECORE_NO_SYSTEM_MODULES", "1", 0);
    efreet_cache_disable();
}

// Without this the toolkit ends the program silently if the X server closes the connection before
// the first window is created. Later the toolkit uses a handler of its own, with the same status.
void OnConnectionLost(void*) {
    constexpr int DISPLAY_LOST = 101;
    LOG_ERROR("The connection to the X server is lost");
    std::exit(DISPLAY_LOST);
}

bool NeedsDisplay() {
    const char* engine = std::getenv("ELM_ENGINE");
    return engine == nullptr || std::strstr(engine, "x11") != nullptr ||
           std::strstr(engine, "wayland") != nullptr;
}

// On a connection of its own: the toolkit's tells X11 from Wayland by whether it is connected.
bool XServerAnswers() {
    Display* display = XOpenDisplay(nullptr);
    if (display != nullptr) {
        XCloseDisplay(display);
    }
    return display != nullptr;
}

// To wake a thread costs more than to draw two rows; and a frame that a thread of the toolkit still
// draws while Wayland gives the window another size ends the program on a busy machine.
void DrawOnOneThread() {
    setenv("ECORE_EVAS_FORCE_SYNC_RENDER", "1", 0);
}

}  // namespace

Toolkit::Toolkit(int argc, char** argv) {
    KeepOutHelpers();
    DrawOnOneThread();
    DrawWithoutSharedMemory();
    XSetExtensionErrorHandler(OnMissingExtension);
    ecore_x_io_error_handler_set(OnConnectionLost, nullptr);
    m_started = elm_init(argc, argv) > 0;
    if (!m_started) {
        LOG_ERROR("The toolkit cannot be started");
        return;
    }
    // Without a window manager nobody marks a window as not withdrawn, and withdrawn windows are
    // never drawn.
    elm_config_agressive_withdrawn_set(EINA_FALSE);
    LoadTheme();
    elm_config_mirrored_set(TextRunsRightToLeft() ? EINA_TRUE : EINA_FALSE);
}

bool Toolkit::HasDisplay() {
    return !NeedsDisplay() || XServerAnswers() || WaylandAnswers();
}

Toolkit::~Toolkit() {
    if (m_started) {
        elm_shutdown();
    }
    efreet_cache_enable();
}

}  // namespace applist::desktop
