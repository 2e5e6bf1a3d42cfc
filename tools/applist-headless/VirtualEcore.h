// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Ecore.h>
#include <Ecore_Input.h>
#include <functional>
#include <string>
#include <vector>

/// The toolkit's timers and key events without the toolkit, with a clock that the caller advances.
/// Linking it provides ecore_timer_add(), _reset(), _del(), ecore_event_handler_add(), _del() and
/// ECORE_EVENT_KEY_UP and _DOWN, for one timer and one handler at a time. A wrong use ends the
/// program with a message.
namespace applist::headless {

class VirtualEcore {
public:
    /// Every call, oldest first: "ecore_timer_add(65)", "ecore_timer_reset(null)".
    std::vector<std::string> history;
    /// Called with each entry of the history when it is added.
    std::function<void(const std::string&)> onCall = [](const std::string&) {};
    /// The next registration of the kind returns null.
    bool failTimer = false;
    bool failHandler = false;

    /// Advances the clock and calls each timer when it is due, repeatedly until it ends.
    void Advance(double seconds);
    /// Delivers a key event to the handlers of its type. Returns the last handler's result, or
    /// ECORE_CALLBACK_PASS_ON without a handler.
    Eina_Bool Send(int type, const char* keyname, const char* key);
    /// Delivers a key release whose keyname equals its key.
    Eina_Bool Release(const char* key) { return Send(ECORE_EVENT_KEY_UP, key, key); }

    bool HasTimer() const { return m_timer.function != nullptr; }
    bool HasHandler() const { return m_handler.function != nullptr; }

    // The implementations of the replaced functions.
    Ecore_Timer* AddTimer(double interval, Ecore_Task_Cb function, const void* data);
    void ResetTimer(Ecore_Timer* timer);
    void* DeleteTimer(Ecore_Timer* timer);
    Ecore_Event_Handler* AddHandler(int type, Ecore_Event_Handler_Cb function, const void* data);
    void* DeleteHandler(Ecore_Event_Handler* handler);

private:
    void Record(const std::string& call);

    struct Timer {
        double interval = 0;
        double due = 0;
        Ecore_Task_Cb function = nullptr;
        void* data = nullptr;
    };
    struct Handler {
        int type = 0;
        Ecore_Event_Handler_Cb function = nullptr;
        void* data = nullptr;
    };
    double m_now = 0;
    Timer m_timer;
    Handler m_handler;
};

/// The one loop of the process; assign VirtualEcore{} to reset it.
VirtualEcore& TheEcore();

}  // namespace applist::headless
