// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Ecore.h>
#include <functional>
#include <optional>
#include <string>

#include "app.h"
#include "launch/LaunchProtocol.h"

namespace applist::desktop {

class SingleInstance;
class Toolkit;

/// One run of an application: decides its role among other instances, runs it and shuts it down.
/// Main thread only.
class Lifecycle {
public:
    /// Results of Run(), which ui_app_main() returns: 0 or negative, see app.h.
    enum Result {
        ENDED = 0,
        NO_CALLBACKS = -1,
        TOOLKIT_NOT_STARTED = -2,
        CREATE_REFUSED = -3,
        HAND_OVER_FAILED = -4,
        FAILED = -5,
        NO_DISPLAY = -6,
    };

    /// callbacks and userData must outlive the object. launch is the request that started the
    /// program, or nothing if the bus started it and sends the first request later.
    Lifecycle(const ui_app_callbacks& callbacks, void* userData, std::string applicationId,
              std::optional<app_control_s> launch);

    Result Run(int argc, char** argv);
    /// Ends the run; see ui_app_exit(). If a window is shown, it is hidden and the bus name is
    /// released at once, and the loop ends later, so that other programs can still query the
    /// viewer's choice. A signal ends the loop without this wait.
    void Exit();

    /// Handles a launch request from another instance.
    void Relaunched(app_control_s& request);
    /// Called in the first iteration of the loop.
    void Started();
    /// Called by the timer when the wait before the end is over.
    void WaitOver();
    void VisibilityChanged(bool visible);
    /// Returns the window of this name that was prepared for the application; null if there is
    /// none.
    Evas_Object* TakeWindow(const std::string& name);

private:
    Result RunToolkit(int argc, char** argv);
    /// Runs the application with the started toolkit. Resets instance before the application ends.
    Result RunOnScreen(std::optional<SingleInstance>& instance);
    Result RunApplication();
    Result HandOver(SingleInstance& first);
    /// Delivers the request that started the program to the application, on the first call only.
    void DeliverLaunch();
    void Leave();

    const ui_app_callbacks& m_callbacks;
    void* m_userData;
    std::string m_applicationId;
    std::optional<app_control_s> m_launch;
    bool m_created = false;
    bool m_exitAsked = false;
    bool m_looping = false;
    bool m_leaving = false;
    /// Hides the windows and releases the keyboard and the bus name. Returns true if a window was
    /// shown. Set while the toolkit is running.
    std::function<bool()> m_leaveScreen;
    Ecore_Timer* m_wait = nullptr;
    /// Set while the toolkit is running.
    Toolkit* m_toolkit = nullptr;
};

}  // namespace applist::desktop
