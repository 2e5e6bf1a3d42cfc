// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Ecore.h>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "AppControlRequest.h"
#include "alert-syspopup/AlertWindow.h"
#include "display/EventHandler.h"

namespace applist::desktop {

/// The alert popup as an application: shows what launch requests ask it to say, one alert at a
/// time, and ends after a while or at the viewer's key. Main thread only.
class AlertPopup {
public:
    /// How long an alert stays by itself: time to read four lines from a sofa.
    static constexpr double SHOWN_SECONDS = 10.0;

    /// title names the window.
    explicit AlertPopup(std::string title, double shownSeconds = SHOWN_SECONDS);

    /// Begins to listen. Ends the program, too, when no request comes.
    void Create();
    /// Takes everything down; to be called while the toolkit works.
    void Terminate();
    /// Shows the request's alert, in place of the one before. A request without a text is refused:
    /// the alert before stays, and where there is none the program ends.
    void Launch(const app_control_s& request);

    /// A key acts when it is released, but only if it was pressed here, too: the release of the key
    /// that brought the popup up is not meant for it.
    void KeyPressed(std::string_view key);
    void KeyReleased(std::string_view key);
    void TimeOver();

    /// What is on the screen; null before the first request.
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
