// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Ecore.h>
#include <utility>

#include "Log.h"

namespace applist::desktop {

/// Owns a toolkit event handler and deletes it in the destructor. Must not outlive the toolkit. If
/// the toolkit cannot register the handler, that is logged and the handler is never called.
class [[nodiscard]] EventHandler {
public:
    EventHandler() = default;
    /// Registers a handler ahead of all handlers registered so far.
    static EventHandler InFront(int type, Ecore_Event_Handler_Cb callback, const void* data) {
        return EventHandler(ecore_event_handler_prepend(type, callback, data));
    }
    /// Registers a handler after all handlers registered so far.
    static EventHandler Behind(int type, Ecore_Event_Handler_Cb callback, const void* data) {
        return EventHandler(ecore_event_handler_add(type, callback, data));
    }
    ~EventHandler() { Delete(); }
    EventHandler(const EventHandler&) = delete;
    EventHandler& operator=(const EventHandler&) = delete;
    EventHandler(EventHandler&& other) noexcept
        : m_handler(std::exchange(other.m_handler, nullptr)) {}
    EventHandler& operator=(EventHandler&& other) noexcept {
        Delete();
        m_handler = std::exchange(other.m_handler, nullptr);
        return *this;
    }

private:
    explicit EventHandler(Ecore_Event_Handler* handler) : m_handler(handler) {
        if (handler == nullptr) {
            LOG_ERROR("Failed to register an event handler; keys may be ignored");
        }
    }
    void Delete() {
        if (m_handler != nullptr) {
            ecore_event_handler_del(std::exchange(m_handler, nullptr));
        }
    }

    Ecore_Event_Handler* m_handler = nullptr;
};

}  // namespace applist::desktop
