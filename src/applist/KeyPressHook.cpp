// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "applist/KeyPressHook.h"

#include <Ecore.h>
#include <Ecore_Input.h>
#include <utility>

#include "CallbackGuard.h"

namespace applist {

KeyPressHook::KeyPressHook(std::function<void()> body)
    : m_body(std::move(body)),
      m_handler(ecore_event_handler_prepend(ECORE_EVENT_KEY_DOWN, OnPress, this)) {}

KeyPressHook::~KeyPressHook() {
    if (m_handler != nullptr) {
        ecore_event_handler_del(m_handler);
    }
}

Eina_Bool KeyPressHook::OnPress(void* data, int /*type*/, void* /*event*/) {
    GuardCallback([data] { static_cast<KeyPressHook*>(data)->m_body(); });
    return ECORE_CALLBACK_PASS_ON;
}

}  // namespace applist
