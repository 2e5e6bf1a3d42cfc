// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "AppControlRequest.h"
#include "app.h"
#include "launch/LaunchProtocol.h"

namespace applist::desktop {

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
    };

    /// callbacks and userData must outlive the object.
    Lifecycle(const ui_app_callbacks& callbacks, void* userData, ProgramStart start);

    Result Run(int argc, char** argv);
    /// Ends the run; see ui_app_exit().
    void Exit();

    /// A later launch.
    void Relaunched(app_control_s& request);
    /// The loop's first turn.
    void Started();
    void VisibilityChanged(bool visible);

private:
    Result RunToolkit(int argc, char** argv);
    Result RunApplication();
    /// Hands the launch that started the program to the application, the first time it is called.
    void DeliverLaunch();

    const ui_app_callbacks& m_callbacks;
    void* m_userData;
    app_control_s m_launch;
    bool m_created = false;
    bool m_launchDelivered;
    bool m_exitAsked = false;
    bool m_looping = false;
};

}  // namespace applist::desktop
