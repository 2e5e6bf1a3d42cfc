// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Ecore.h>
#include <functional>
#include <optional>
#include <string>

#include "AppControlRequest.h"
#include "app.h"

namespace applist::desktop {

class SingleInstance;

/// One run of an application, from its place among other instances to its end. Main thread only.
class Lifecycle {
public:
    /// What Run() returns; zero and below, as app.h says.
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
    /// program; nothing when the bus started it to send the first request later.
    Lifecycle(const ui_app_callbacks& callbacks, void* userData, std::string applicationId,
              std::optional<app_control_s> launch);

    Result Run(int argc, char** argv);
    /// Ends the run; see ui_app_exit(). An application that shows a window leaves the screen and
    /// the session at once, and its loop a little later, so that others can still ask it what the
    /// viewer has chosen. A signal ends the loop without this wait.
    void Exit();

    /// A later launch.
    void Relaunched(app_control_s& request);
    /// The loop's first turn.
    void Started();
    /// The wait at the end is over.
    void WaitOver();
    void VisibilityChanged(bool visible);

private:
    Result RunToolkit(int argc, char** argv);
    Result RunApplication();
    Result HandOver(SingleInstance& first);
    /// Hands the launch that started the program to the application, the first time it is called.
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
    /// Makes place for other windows and other instances; true iff a window was shown. Set while
    /// the toolkit works.
    std::function<bool()> m_makePlace;
    Ecore_Timer* m_wait = nullptr;
};

}  // namespace applist::desktop
