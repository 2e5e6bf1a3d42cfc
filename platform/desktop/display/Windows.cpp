// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "display/Windows.h"

#include <Ecore_X.h>
#include <algorithm>
#include <cstdlib>
#include <utility>

#include <X11/Xlib.h>

#include "CallbackGuard.h"
#include "display/Screen.h"
#include "toolkit-internals/FrameDrawing.h"
#include "toolkit-internals/FrameRequests.h"

namespace applist::desktop {
namespace {

// How long a window must be hidden before it is reported as hidden. Window managers that take over
// a window, and the toolkit's first frame, hide it for a moment.
constexpr double SETTLING_SECONDS = 0.1;

// The toolkit's window trap does not have user data.
Windows* g_windows = nullptr;

void* OnAdded(Evas_Object* window) {
    GuardCallback([window] { g_windows->Added(window); });
    return nullptr;
}

void OnDeleted(void*, Evas_Object* window) {
    GuardCallback([window] { g_windows->Deleted(window); });
}

bool IsOnWayland(const Evas_Object* window) {
    return elm_win_wl_window_get(window) != nullptr;
}

// On Wayland a full-screen window hides everything below it, even where it is transparent. A
// maximised window has the same size and, when active, lies over a full-screen video.
Eina_Bool OnFullscreenSet(void*, Evas_Object* window, Eina_Bool fullscreen) {
    if (!IsOnWayland(window)) {
        return EINA_TRUE;
    }
    // The toolkit draws a frame and a title bar around a maximised window that is not borderless.
    elm_win_borderless_set(window, fullscreen);
    elm_win_maximized_set(window, fullscreen);
    return EINA_FALSE;
}

void OnCloseRequested(void* windows, Evas_Object*, void*) {
    GuardCallback([windows] { static_cast<Windows*>(windows)->CloseRequested(); });
}

void OnActivated(void* windows, Evas_Object* window, void*) {
    GuardCallback([&] { static_cast<Windows*>(windows)->Activated(window, true); });
}

void OnDeactivated(void* windows, Evas_Object* window, void*) {
    GuardCallback([&] { static_cast<Windows*>(windows)->Activated(window, false); });
}

Eina_Bool OnShown(void* windows, int, void* event) {
    const auto* shown = static_cast<Ecore_X_Event_Window_Show*>(event);
    GuardCallback([&] { static_cast<Windows*>(windows)->Mapped(shown->win, true); });
    return ECORE_CALLBACK_PASS_ON;
}

Eina_Bool OnHidden(void* windows, int, void* event) {
    const auto* hidden = static_cast<Ecore_X_Event_Window_Hide*>(event);
    GuardCallback([&] { static_cast<Windows*>(windows)->Mapped(hidden->win, false); });
    return ECORE_CALLBACK_PASS_ON;
}

Eina_Bool OnFocusIn(void* windows, int, void* event) {
    const auto* focused = static_cast<Ecore_X_Event_Window_Focus_In*>(event);
    if (focused->win == ecore_x_window_root_first_get()) {
        GuardCallback([windows] { static_cast<Windows*>(windows)->RootFocused(); });
    }
    return ECORE_CALLBACK_PASS_ON;
}

Eina_Bool OnScreenChanged(void* windows, int, void*) {
    GuardCallback([windows] { static_cast<Windows*>(windows)->ScreenChanged(); });
    return ECORE_CALLBACK_PASS_ON;
}

// One bit per key code. X does not use key codes below 8, and the protocol does not fill the first
// byte.
Windows::Keys KeysIn(const char (&bits)[32]) {
    Windows::Keys keys;
    for (unsigned int key = 8; key < 256; ++key) {
        if ((static_cast<unsigned char>(bits[key / 8]) >> key % 8 & 1U) != 0) {
            keys.insert(key);
        }
    }
    return keys;
}

// Hides the event from the toolkit. Without a compositor the toolkit shapes a transparent window to
// its drawn content. The first frame is empty, so the shape is empty, too, and the server reports
// the window as obscured. The toolkit would then stop drawing it permanently.
Eina_Bool OnVisibility(void* windows, int, void* event) {
    const auto* change = static_cast<Ecore_X_Event_Window_Visibility_Change*>(event);
    const bool ours = GuardCallback(false, [&] {
        return static_cast<Windows*>(windows)->Obscured(change->win, change->fully_obscured != 0);
    });
    return ours ? ECORE_CALLBACK_DONE : ECORE_CALLBACK_PASS_ON;
}

// The server sends the state of all keys right after it has given the keyboard to a window, so that
// no press is missed between the two.
Eina_Bool OnXEvent(void* windows, int, void* event) {
    const auto& any = *static_cast<const XEvent*>(event);
    if (any.type == KeymapNotify) {
        GuardCallback(
            [&] { static_cast<Windows*>(windows)->KeyboardMoved(KeysIn(any.xkeymap.key_vector)); });
    }
    return ECORE_CALLBACK_PASS_ON;
}

Eina_Bool OnSettled(void* windows) {
    GuardCallback([windows] { static_cast<Windows*>(windows)->Settle(); });
    return ECORE_CALLBACK_CANCEL;
}

constexpr std::pair<const char*, Evas_Smart_Cb> CALLBACKS[] = {
    {"delete,request", OnCloseRequested},
    {"focused", OnActivated},
    {"unfocused", OnDeactivated},
};

bool HasShape(Ecore_X_Window window) {
    int count = 0;
    // The toolkit allocates the rectangles with malloc().
    std::free(ecore_x_window_shape_rectangles_get(window, &count));
    return count > 0;
}

// A closed window leaves the keyboard to the root window, to the window below the pointer or to
// none.
bool IsKeyboardFree() {
    const Ecore_X_Window focused = ecore_x_window_focus_get();
    return focused == None || focused == PointerRoot || focused == ecore_x_window_root_first_get();
}

bool HasWindowManager() {
    Ecore_X_Window check = 0;
    // The EWMH standard requires a window manager to set this property on the root window.
    return ecore_x_window_prop_window_get(ecore_x_window_root_first_get(),
                                          ECORE_X_ATOM_NET_SUPPORTING_WM_CHECK, &check, 1) > 0;
}

Elm_Win_Trap MakeTrap() {
    Elm_Win_Trap trap{};
    trap.version = ELM_WIN_TRAP_VERSION;
    trap.add = OnAdded;
    trap.del = OnDeleted;
    trap.fullscreen_set = OnFullscreenSet;
    return trap;
}

}  // namespace

Windows::Windows(Listener listener) : m_listener(std::move(listener)) {
    // Static, because the toolkit keeps the pointer.
    static const Elm_Win_Trap trap = MakeTrap();
    g_windows = this;
    elm_win_trap_set(&trap);
}

Windows::~Windows() {
    // The toolkit must not call the trap after g_windows is null.
    elm_win_trap_set(nullptr);
    g_windows = nullptr;
    StopSettling();
    // The windows may outlive this object, so their callbacks are removed.
    for (const Window& window : m_windows) {
        for (const auto& [event, callback] : CALLBACKS) {
            evas_object_smart_callback_del_full(window.object, event, callback, this);
        }
    }
}

Evas_Object* Windows::Find(Ecore_Window id) {
    const Window* window = Lookup(id);
    return window != nullptr ? window->object : nullptr;
}

Windows::Window* Windows::Lookup(Ecore_Window id) {
    const auto found = std::find_if(m_windows.begin(), m_windows.end(), [id](const Window& window) {
        return elm_win_window_id_get(window.object) == id;
    });
    return found != m_windows.end() ? &*found : nullptr;
}

bool Windows::Hide() {
    bool shown = false;
    for (const Window& window : m_windows) {
        shown = shown || evas_object_visible_get(window.object) != EINA_FALSE;
        // Pending mouse clicks must not take effect any more.
        evas_event_freeze(evas_object_evas_get(window.object));
        evas_object_hide(window.object);
    }
    return shown;
}

void Windows::Added(Evas_Object* window) {
    m_windows.push_back({window});
    FitToScreen(window);
    LimitFirstFrame(window);
    SendFramesAtOnce(window);
    m_listener.created(window);
    for (const auto& [event, callback] : CALLBACKS) {
        evas_object_smart_callback_add(window, event, callback, this);
    }
    // The rest handles X events, which need an X connection.
    if (ecore_x_display_get() == nullptr) {
        return;
    }
    // The toolkit's enumeration does not have this X event mask, so the value is cast.
    ecore_x_event_mask_set(static_cast<Ecore_X_Window>(elm_win_window_id_get(window)),
                           static_cast<Ecore_X_Event_Mask>(KeymapStateMask));
    if (m_handlers.empty()) {
        ListenToDisplay();
    }
}

void Windows::ListenToDisplay() {
    m_handlers.push_back(EventHandler::InFront(ECORE_X_EVENT_WINDOW_SHOW, OnShown, this));
    m_handlers.push_back(EventHandler::InFront(ECORE_X_EVENT_WINDOW_HIDE, OnHidden, this));
    m_handlers.push_back(EventHandler::InFront(ECORE_X_EVENT_ANY, OnXEvent, this));
    m_handlers.push_back(
        EventHandler::InFront(ECORE_X_EVENT_WINDOW_VISIBILITY_CHANGE, OnVisibility, this));
    m_handlers.push_back(EventHandler::InFront(ECORE_X_EVENT_WINDOW_FOCUS_IN, OnFocusIn, this));
    m_handlers.push_back(EventHandler::InFront(ECORE_X_EVENT_SCREEN_CHANGE, OnScreenChanged, this));
    ecore_x_randr_events_select(ecore_x_window_root_first_get(), EINA_TRUE);
}

void Windows::Deleted(const Evas_Object* window) {
    std::erase_if(m_windows, [window](const Window& known) { return known.object == window; });
    Update();
}

void Windows::Mapped(Ecore_Window id, bool mapped) {
    Window* window = Lookup(id);
    if (window == nullptr) {
        return;
    }
    window->mapped = mapped;
    // A window manager gives the window the focus and the screen's size. Without one, this program
    // must do both, or no key arrives.
    if (mapped && !HasWindowManager()) {
        FillScreen(static_cast<Ecore_X_Window>(id));
        ecore_x_window_focus(static_cast<Ecore_X_Window>(id));
        ecore_x_event_mask_set(ecore_x_window_root_first_get(),
                               ECORE_X_EVENT_MASK_WINDOW_FOCUS_CHANGE);
    }
    Update();
}

void Windows::RootFocused() {
    const auto shown = std::find_if(m_windows.rbegin(), m_windows.rend(), [](const Window& window) {
        return window.mapped && evas_object_visible_get(window.object);
    });
    if (shown != m_windows.rend() && !HasWindowManager() && IsKeyboardFree()) {
        ecore_x_window_focus(static_cast<Ecore_X_Window>(elm_win_window_id_get(shown->object)));
    }
}

void Windows::ScreenChanged() {
    const bool managed = HasWindowManager();
    for (const Window& window : m_windows) {
        FitToScreen(window.object);
        if (!managed) {
            FillScreen(static_cast<Ecore_X_Window>(elm_win_window_id_get(window.object)));
        }
    }
}

bool Windows::Obscured(Ecore_Window id, bool obscured) {
    Window* window = Lookup(id);
    if (window == nullptr) {
        // The toolkit handles the events of windows that are not known here.
        return false;
    }
    window->obscured = obscured;
    Update();
    return true;
}

void Windows::Activated(const Evas_Object* object, bool active) {
    if (!IsOnWayland(object)) {
        return;
    }
    for (Window& window : m_windows) {
        // Only X11 has show and hide events, so here the active window counts as mapped.
        window.mapped = window.object == object ? active : window.mapped;
    }
    // A window that is not active does not get key releases, so no key counts as held.
    if (!active) {
        KeyboardMoved({});
    }
    Update();
}

bool Windows::TakesKeys(Ecore_Window id) {
    const Window* window = Lookup(id);
    return window == nullptr || ecore_x_display_get() == nullptr || Visible(*window);
}

void Windows::Settle() {
    // The toolkit deletes the expired timer.
    m_settling = nullptr;
    Report(std::any_of(m_windows.begin(), m_windows.end(), Visible));
}

// The server reports a window with an empty shape as obscured even if no other window covers it.
bool Windows::Visible(const Window& window) {
    return window.mapped &&
           !(window.obscured &&
             HasShape(static_cast<Ecore_X_Window>(elm_win_window_id_get(window.object))));
}

// A visible window is reported at once, a hidden one only after it has settled.
void Windows::Update() {
    const bool visible = std::any_of(m_windows.begin(), m_windows.end(), [](const Window& window) {
        return window.mapped && !window.obscured;
    });
    if (visible) {
        StopSettling();
        Report(true);
    } else if (m_visible && m_settling == nullptr) {
        // A running timer is not restarted, so that repeated events cannot delay the report.
        m_settling = ecore_timer_add(SETTLING_SECONDS, OnSettled, this);
    }
}

void Windows::Report(bool visible) {
    if (std::exchange(m_visible, visible) != visible) {
        m_listener.visibilityChanged(visible);
    }
}

void Windows::StopSettling() {
    if (m_settling != nullptr) {
        ecore_timer_del(std::exchange(m_settling, nullptr));
    }
}

}  // namespace applist::desktop
