// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "display/Keyboard.h"

#include <string>
#include <string_view>
#include <utility>

#include <X11/Xlib.h>

#include "CallbackGuard.h"

namespace applist::desktop {
namespace {

Eina_Bool OnPress(void* keyboard, int, void* key) {
    const bool taken = GuardCallback(false, [&] {
        return static_cast<Keyboard*>(keyboard)->Press(*static_cast<Ecore_Event_Key*>(key));
    });
    return taken ? ECORE_CALLBACK_DONE : ECORE_CALLBACK_PASS_ON;
}

Eina_Bool OnRelease(void* keyboard, int, void* key) {
    const bool taken = GuardCallback(false, [&] {
        return static_cast<Keyboard*>(keyboard)->Release(*static_cast<Ecore_Event_Key*>(key));
    });
    return taken ? ECORE_CALLBACK_DONE : ECORE_CALLBACK_PASS_ON;
}

// If the keymap does not name a key, the toolkit names it by its code on X11 but not on Wayland, so
// this does the same for both.
std::string NameOf(const Ecore_Event_Key& key) {
    const std::string_view name = key.key;
    return name.empty() || name == "NoSymbol" ? "Keycode-" + std::to_string(key.keycode)
                                              : std::string(name);
}

Display* Server() {
    return static_cast<Display*>(ecore_x_display_get());
}

}  // namespace

KeyboardGrab::KeyboardGrab() : m_window(ecore_x_window_input_new(0, -1, -1, 1, 1)) {
    ecore_x_window_show(m_window);
    // Fails if another program already grabs the keyboard. Keys then go to that program.
    static_cast<void>(XGrabKeyboard(Server(), static_cast<Window>(m_window), False, GrabModeAsync,
                                    GrabModeSync, CurrentTime));
    Next();
}

KeyboardGrab::~KeyboardGrab() {
    ecore_x_keyboard_ungrab();
    ecore_x_window_free(m_window);
    ecore_x_flush();
}

void KeyboardGrab::Next() {
    XAllowEvents(Server(), SyncKeyboard, CurrentTime);
    XFlush(Server());
}

Keyboard::Keyboard(Windows& windows, KeyTable keys)
    : m_windows(windows),
      m_keys(std::move(keys)),
      m_press(EventHandler::InFront(ECORE_EVENT_KEY_DOWN, OnPress, this)),
      m_release(EventHandler::InFront(ECORE_EVENT_KEY_UP, OnRelease, this)) {
    windows.OnKeyboardMoved([this](const Windows::Keys& held) { Moved(held); });
}

// A key that was already held when the keyboard came to the window is not a press for it.
bool Keyboard::Press(Ecore_Event_Key& key) {
    if (m_grab) {
        KeyboardGrab::Next();
    }
    if (!m_windows.TakesKeys(key.window)) {
        m_down.erase(key.keycode);
        m_heldBefore.insert(key.keycode);
        return true;
    }
    if (m_heldBefore.contains(key.keycode)) {
        return true;
    }
    m_down.insert(key.keycode);
    Rename(key);
    return m_closed;
}

// A release without a press in this window is ignored.
bool Keyboard::Release(Ecore_Event_Key& key) {
    m_heldBefore.erase(key.keycode);
    const bool pressedHere = m_down.erase(key.keycode) > 0;
    ReleaseGrab();
    Rename(key);
    return m_closed || !pressedHere || !m_windows.TakesKeys(key.window);
}

void Keyboard::Close() {
    m_closed = true;
    // Until the held keys are released, the grab keeps their events from the next window.
    if (HasKeysDown() && ecore_x_display_get() != nullptr) {
        m_grab.emplace();
    }
}

void Keyboard::ReleaseGrab() {
    if (!HasKeysDown()) {
        m_grab.reset();
    } else if (m_grab) {
        KeyboardGrab::Next();
    }
}

// The event's strings are stored in the same memory block as the event and freed with it, so the
// pointers may be replaced by pointers to other strings.
void Keyboard::Rename(Ecore_Event_Key& key) const {
    if (const char* name = m_keys.Find(NameOf(key))) {
        key.key = name;
        key.keyname = name;
        // The text that the original key would type.
        key.string = nullptr;
        key.compose = nullptr;
    }
}

void Keyboard::Moved(const Windows::Keys& held) {
    std::erase_if(m_down, [&held](unsigned int key) { return !held.contains(key); });
    m_heldBefore = held;
    // A key that was pressed here and is still held is not one that was held before.
    for (const unsigned int key : m_down) {
        m_heldBefore.erase(key);
    }
    ReleaseGrab();
}

}  // namespace applist::desktop
