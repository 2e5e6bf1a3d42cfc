// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>

typedef unsigned char Eina_Bool;
typedef struct _Ecore_Event_Handler Ecore_Event_Handler;

namespace applist {

/// Calls body for every key that goes down, before those see it that listen already. Main
/// thread only.
class KeyPressHook {
public:
    explicit KeyPressHook(std::function<void()> body);
    ~KeyPressHook();
    KeyPressHook(const KeyPressHook&) = delete;
    KeyPressHook& operator=(const KeyPressHook&) = delete;
    KeyPressHook(KeyPressHook&&) = delete;
    KeyPressHook& operator=(KeyPressHook&&) = delete;

private:
    static Eina_Bool OnPress(void* data, int type, void* event);

    std::function<void()> m_body;
    Ecore_Event_Handler* m_handler;
};

}  // namespace applist
