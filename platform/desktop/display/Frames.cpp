// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "display/Frames.h"

#include <Ecore_Evas.h>
#include <Ecore_Input.h>
#include <Edje.h>
#include <utility>

#include "CallbackGuard.h"

namespace applist::desktop {
namespace {

Eina_Bool OnBeforeFrame(void* /*data*/) {
    edje_message_signal_process();
    return ECORE_CALLBACK_RENEW;
}

Eina_Bool OnKey(void* frames, int, void* key) {
    static_cast<KeyFrames*>(frames)->Note(static_cast<Ecore_Event_Key*>(key)->window);
    return ECORE_CALLBACK_PASS_ON;
}

Eina_Bool OnBeforeWait(void* frames) {
    GuardCallback([frames] { static_cast<KeyFrames*>(frames)->Draw(); });
    return ECORE_CALLBACK_RENEW;
}

}  // namespace

ThemeSignals::ThemeSignals()
    : m_beforeFrame(ecore_idle_enterer_before_add(OnBeforeFrame, nullptr)) {}

// The enterer is added after the others, because their changes belong to the same frame.
KeyFrames::KeyFrames(Windows& windows)
    : m_windows(windows),
      m_press(EventHandler::InFront(ECORE_EVENT_KEY_DOWN, OnKey, this)),
      m_release(EventHandler::InFront(ECORE_EVENT_KEY_UP, OnKey, this)),
      m_beforeWait(ecore_idle_enterer_add(OnBeforeWait, this)) {}

void KeyFrames::Draw() {
    // The window is looked up by its id, because it may be deleted between the key and the frame.
    const auto id = std::exchange(m_window, std::nullopt);
    const Evas_Object* window = id ? m_windows.Find(*id) : nullptr;
    if (window == nullptr) {
        return;
    }
    Evas* canvas = evas_object_evas_get(window);
    // Rows that scroll into view send signals to the theme while they are laid out. The toolkit
    // would deliver them after the frame, and wake up for its next three ticks.
    evas_smart_objects_calculate(canvas);
    edje_message_signal_process();
    ecore_evas_manual_render(ecore_evas_ecore_evas_get(canvas));
}

}  // namespace applist::desktop
