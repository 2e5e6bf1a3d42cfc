// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "display/ScreenFit.h"

#include <Elementary.h>
#include <cstdlib>

#include "CallbackGuard.h"
#include "display/WaylandScreen.h"

namespace applist::desktop {
namespace {

constexpr double DRAWN_FOR_HEIGHT = 1080.0;
constexpr double DEFAULT_SCALE = 1.0;

// Evaluated once, before FitToHeight() changes the scale itself.
bool HasOwnScale() {
    static const bool own =
        std::getenv("ELM_SCALE") != nullptr || elm_config_scale_get() != DEFAULT_SCALE;
    return own;
}

void FitToHeight(int height) {
    if (height > 0 && !HasOwnScale()) {
        elm_config_scale_set(height / DRAWN_FOR_HEIGHT);
    }
}

void OnResized(void*, Evas*, Evas_Object* window, void*) {
    GuardCallback([window] {
        int height = 0;
        evas_object_geometry_get(window, nullptr, nullptr, nullptr, &height);
        FitToHeight(height);
    });
}

}  // namespace

Eina_Rectangle FirstMonitor() {
    Eina_Rectangle found{0, 0, 0, 0};
    for (int i = 0; i < ecore_x_xinerama_screen_count_get(); ++i) {
        if (ecore_x_xinerama_screen_geometry_get(i, &found.x, &found.y, &found.w, &found.h) != 0 &&
            found.x == 0 && found.y == 0) {
            return found;
        }
    }
    found = {0, 0, 0, 0};
    ecore_x_screen_size_get(ecore_x_default_screen_get(), &found.w, &found.h);
    return found;
}

void FitToScreen(Evas_Object* window) {
    const int height =
        ecore_x_display_get() != nullptr ? FirstMonitor().h : WaylandScreenHeight(window);
    FitToHeight(height);
    // A height that is not known yet becomes known when the window gets its size.
    if (height == 0) {
        evas_object_event_callback_add(window, EVAS_CALLBACK_RESIZE, OnResized, nullptr);
    }
}

// Calls X directly, because the toolkit does not resize a window that it considers full-screen.
void FillScreen(Ecore_X_Window window) {
    const Eina_Rectangle monitor = FirstMonitor();
    ecore_x_window_move_resize(window, monitor.x, monitor.y, monitor.w, monitor.h);
}

}  // namespace applist::desktop
