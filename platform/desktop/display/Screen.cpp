// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "display/Screen.h"

#include <Ecore_Evas.h>
#include <Elementary.h>
#include <cstdlib>
#include <memory>
#include <string_view>

#include <wayland-client.h>

#include "CallbackGuard.h"

namespace applist::desktop {
namespace {

// The Wayland protocol has the scale event since version 2 of wl_output.
constexpr uint32_t VERSION_WITH_SCALE = 2;

struct Disconnect {
    void operator()(wl_display* display) const { wl_display_disconnect(display); }
};
using Connection = std::unique_ptr<wl_display, Disconnect>;

// The first screen of the display.
struct WaylandScreen {
    wl_output* output = nullptr;
    int height = 0;
    int scale = 1;
};

// libwayland aborts on an event without a handler, so events that are not used need one, too.
void OnGeometry(void*, wl_output*, int, int, int, int, int, const char*, const char*, int) {}
void OnDone(void*, wl_output*) {}

void OnMode(void* screen, wl_output*, uint32_t flags, int, int height, int) {
    // A screen may report all its modes; only the current one counts.
    if ((flags & WL_OUTPUT_MODE_CURRENT) != 0) {
        static_cast<WaylandScreen*>(screen)->height = height;
    }
}

void OnScale(void* screen, wl_output*, int scale) {
    static_cast<WaylandScreen*>(screen)->scale = scale;
}

void OnGlobal(void* data, wl_registry* registry, uint32_t name, const char* interface,
              uint32_t version) {
    static const wl_output_listener listener = [] {
        // Set by name, because newer libraries add members. Version 2 does not send their events.
        wl_output_listener all{};
        all.geometry = OnGeometry;
        all.mode = OnMode;
        all.done = OnDone;
        all.scale = OnScale;
        return all;
    }();
    auto* screen = static_cast<WaylandScreen*>(data);
    if (std::string_view(interface) == wl_output_interface.name && version >= VERSION_WITH_SCALE &&
        screen->output == nullptr) {
        screen->output = static_cast<wl_output*>(
            wl_registry_bind(registry, name, &wl_output_interface, VERSION_WITH_SCALE));
        wl_output_add_listener(screen->output, &listener, screen);
    }
}

void OnGlobalRemoved(void*, wl_registry*, uint32_t) {}

WaylandScreen AskForScreen(wl_display* display) {
    static constexpr wl_registry_listener listener{OnGlobal, OnGlobalRemoved};
    WaylandScreen screen;
    wl_registry* registry = wl_display_get_registry(display);
    wl_registry_add_listener(registry, &listener, &screen);
    // The first round trip lists the screens, the second one describes the bound screen.
    wl_display_roundtrip(display);
    wl_display_roundtrip(display);
    if (screen.output != nullptr) {
        wl_output_destroy(screen.output);
    }
    wl_registry_destroy(registry);
    return screen;
}

bool IsDrawnByWayland(const Evas_Object* window) {
    const Ecore_Evas* canvas = ecore_evas_ecore_evas_get(evas_object_evas_get(window));
    return std::string_view(ecore_evas_engine_name_get(canvas)).rfind("wayland", 0) == 0;
}

// Returns the height of the screen in pixels for a window on Wayland, 0 otherwise. Waits for the
// display's reply, because widgets created before the toolkit receives the size would be scaled
// for another screen.
// Uses a separate connection. The toolkit may be about to read from its own one, so waiting on that
// could deadlock.
int WaylandScreenHeight(const Evas_Object* window) {
    if (!IsDrawnByWayland(window)) {
        return 0;
    }
    const Connection display(wl_display_connect(nullptr));
    if (!display) {
        return 0;
    }
    const WaylandScreen screen = AskForScreen(display.get());
    // The mode is in physical pixels, the toolkit's sizes are in scaled ones.
    return screen.height / screen.scale;
}

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

bool WaylandAnswers() {
    return Connection(wl_display_connect(nullptr)) != nullptr;
}

}  // namespace applist::desktop
