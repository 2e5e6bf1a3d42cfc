// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "VirtualEcore.h"

#include <cstdio>
#include <cstdlib>
#include <sstream>

namespace applist::headless {
namespace {

void Require(bool condition, const char* rule) {
    if (!condition) {
        static_cast<void>(std::fprintf(stderr, "VirtualEcore: %s\n", rule));
        std::abort();
    }
}

}  // namespace

VirtualEcore& TheEcore() {
    static VirtualEcore ecore;
    return ecore;
}

void VirtualEcore::Advance(double seconds) {
    m_now += seconds;
    while (HasTimer() && m_timer.due <= m_now) {
        // Set before the call, because the function may reset or delete the timer.
        m_timer.due += m_timer.interval;
        if (m_timer.function(m_timer.data) == ECORE_CALLBACK_CANCEL) {
            m_timer = {};
        }
    }
}

Eina_Bool VirtualEcore::Send(int type, const char* keyname, const char* key) {
    if (!HasHandler() || m_handler.type != type) {
        return ECORE_CALLBACK_PASS_ON;
    }
    Ecore_Event_Key event{};
    event.keyname = keyname;
    event.key = key;
    return m_handler.function(m_handler.data, type, &event);
}

void VirtualEcore::Record(const std::string& call) {
    history.push_back(call);
    onCall(call);
}

Ecore_Timer* VirtualEcore::AddTimer(double interval, Ecore_Task_Cb function, const void* data) {
    std::ostringstream call;
    call << "ecore_timer_add(" << interval << ")";
    Record(call.str());
    if (failTimer) {
        return nullptr;
    }
    Require(!HasTimer(), "one timer at a time");
    // The toolkit takes const data, but passes it to the function as non-const.
    m_timer = {interval, m_now + interval, function, const_cast<void*>(data)};
    // Ecore_Timer is opaque. The caller only stores the address and passes it back.
    return reinterpret_cast<Ecore_Timer*>(&m_timer);
}

void VirtualEcore::ResetTimer(Ecore_Timer* timer) {
    Record(timer != nullptr ? "ecore_timer_reset(timer)" : "ecore_timer_reset(null)");
    if (timer != nullptr) {
        Require(HasTimer(), "reset of a timer that is gone");
        m_timer.due = m_now + m_timer.interval;
    }
}

void* VirtualEcore::DeleteTimer(Ecore_Timer* timer) {
    Record("ecore_timer_del");
    Require(timer != nullptr && HasTimer(), "deletion of a timer that is gone");
    void* data = m_timer.data;
    m_timer = {};
    return data;
}

Ecore_Event_Handler* VirtualEcore::AddHandler(int type, Ecore_Event_Handler_Cb function,
                                              const void* data) {
    Record(type == ECORE_EVENT_KEY_UP ? "ecore_event_handler_add(key up)"
                                      : "ecore_event_handler_add(?)");
    if (failHandler) {
        return nullptr;
    }
    m_handler = {type, function, const_cast<void*>(data)};
    return reinterpret_cast<Ecore_Event_Handler*>(&m_handler);
}

void* VirtualEcore::DeleteHandler(Ecore_Event_Handler* handler) {
    Record("ecore_event_handler_del");
    Require(handler != nullptr && HasHandler(), "deletion of a handler that is gone");
    void* data = m_handler.data;
    m_handler = {};
    return data;
}

}  // namespace applist::headless

using applist::headless::TheEcore;

// The toolkit assigns the event types at run time, so any two different numbers do.
int ECORE_EVENT_KEY_DOWN = 41;
int ECORE_EVENT_KEY_UP = 42;

extern "C" Ecore_Timer* ecore_timer_add(double in, Ecore_Task_Cb func, const void* data) {
    return TheEcore().AddTimer(in, func, data);
}

extern "C" void ecore_timer_reset(Ecore_Timer* timer) {
    TheEcore().ResetTimer(timer);
}

extern "C" void* ecore_timer_del(Ecore_Timer* timer) {
    return TheEcore().DeleteTimer(timer);
}

extern "C" Ecore_Event_Handler* ecore_event_handler_add(int type, Ecore_Event_Handler_Cb func,
                                                        const void* data) {
    return TheEcore().AddHandler(type, func, data);
}

extern "C" void* ecore_event_handler_del(Ecore_Event_Handler* event_handler) {
    return TheEcore().DeleteHandler(event_handler);
}
