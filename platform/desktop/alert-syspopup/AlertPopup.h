// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Ecore.h>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "alert-syspopup/AlertWindow.h"
#include "display/EventHandler.h"
#include "launch/LaunchProtocol.h"

namespace applist::desktop {

/// The alert popup application. Shows one alert at a time and ends after a timeout or when the
/// viewer presses a closing key. Main thread only.
class AlertPopup {
public:
    /// Seconds until an alert closes: enough to read four lines from a sofa.
    static constexpr double SHOWN_SECONDS = 10.0;

    /// title is the window's name.
    explicit AlertPopup(std::string title, double shownSeconds = SHOWN_SECONDS);

    /// Starts to listen for keys and starts the timer, which also ends the program if no request
    /// arrives.
    void Create();
    /// Releases everything. Call while the toolkit is still usable.
    void Terminate();
    /// Shows the request's alert and replaces the previous one. Refuses a request without a text:
    /// the previous alert stays, or the program ends if it does not show an alert yet.
    void Launch(const app_control_s& request);

    /// A key acts on release, and only if its press was seen here as well. This ignores the release
    /// of the key that opened the popup.
    void KeyPressed(std::string_view key);
    void KeyReleased(std::string_view key);
    void TimeOver();

    /// The window, or null before the first request.
    const AlertWindow* window() const { return m_window.get(); }

private:
    struct DeleteTimer {
        void operator()(Ecore_Timer* timer) const { ecore_timer_del(timer); }
    };
    void RestartTimer();

    const std::string m_title;
    const double m_shownSeconds;
    std::vector<EventHandler> m_keys;
    std::string m_pressed;
    std::unique_ptr<Ecore_Timer, DeleteTimer> m_timer;
    std::unique_ptr<AlertWindow> m_window;
};

}  // namespace applist::desktop
