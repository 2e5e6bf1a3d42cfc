// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "Lifecycle.h"

#include <Elementary.h>
#include <cerrno>
#include <optional>
#include <utility>

#include "ApplicationId.h"
#include "CallbackGuard.h"
#include "GlibLoop.h"
#include "Keyboard.h"
#include "SingleInstance.h"
#include "Toolkit.h"
#include "Windows.h"
#include "launch/LaunchProtocol.h"

namespace applist::desktop {
namespace {

// For ui_app_exit(), which has no argument.
Lifecycle* g_running = nullptr;

void OnFirstTurn(void* lifecycle) {
    GuardCallback([lifecycle] { static_cast<Lifecycle*>(lifecycle)->Started(); });
}

}  // namespace

Lifecycle::Lifecycle(const ui_app_callbacks& callbacks, void* userData, ProgramStart start)
    : m_callbacks(callbacks),
      m_userData(userData),
      m_launch(std::move(start.launch)),
      m_launchDelivered(start.asService) {}

Lifecycle::Result Lifecycle::Run(int argc, char** argv) {
    g_running = this;
    const Result result = RunToolkit(argc, argv);
    g_running = nullptr;
    return result;
}

Lifecycle::Result Lifecycle::RunToolkit(int argc, char** argv) {
    std::optional<SingleInstance> instance(std::in_place, m_launch.appId,
                                           [this](app_control_s& request) { Relaunched(request); });
    if (instance->role() == SingleInstance::Role::Later) {
        return instance->HandOver(m_launch) ? ENDED : HAND_OVER_FAILED;
    }
    const Toolkit toolkit(argc, argv);
    if (!toolkit.Started()) {
        return TOOLKIT_NOT_STARTED;
    }
    const GlibLoop glib;
    Windows windows({[this](bool visible) { VisibilityChanged(visible); }, [this] { Exit(); }});
    const Keyboard keyboard(windows);
    const Result result = RunApplication();
    // From here on a launch must start a new instance: nobody would see it in this one.
    instance.reset();
    if (result == ENDED) {
        m_callbacks.terminate(m_userData);
    }
    return result;
}

Lifecycle::Result Lifecycle::RunApplication() {
    if (!m_callbacks.create(m_userData)) {
        LOG_ERROR("%s refused to start", m_launch.appId.c_str());
        return CREATE_REFUSED;
    }
    m_created = true;
    // Inside the loop, where an end asked for takes effect. The toolkit forgets one before.
    ecore_job_add(OnFirstTurn, this);
    m_looping = true;
    elm_run();
    m_looping = false;
    return ENDED;
}

void Lifecycle::Started() {
    DeliverLaunch();
    if (m_exitAsked) {
        elm_exit();
    }
}

void Lifecycle::DeliverLaunch() {
    if (!std::exchange(m_launchDelivered, true)) {
        m_callbacks.app_control(&m_launch, m_userData);
    }
}

void Lifecycle::Exit() {
    m_exitAsked = true;
    if (m_looping) {
        elm_exit();
    }
}

void Lifecycle::Relaunched(app_control_s& request) {
    // A main context that runs inside create would bring requests before their time.
    if (!m_created) {
        return;
    }
    DeliverLaunch();
    m_callbacks.app_control(&request, m_userData);
}

void Lifecycle::VisibilityChanged(bool visible) {
    (visible ? m_callbacks.resume : m_callbacks.pause)(m_userData);
}

}  // namespace applist::desktop

using applist::desktop::Lifecycle;

extern "C" int ui_app_main(int argc, char** argv, ui_app_callbacks* callbacks, void* user_data) {
    const bool complete = callbacks != nullptr && callbacks->create != nullptr &&
                          callbacks->terminate != nullptr && callbacks->pause != nullptr &&
                          callbacks->resume != nullptr && callbacks->app_control != nullptr;
    if (!complete) {
        LOG_ERROR("ui_app_main: a callback is missing");
        return Lifecycle::NO_CALLBACKS;
    }
    const char* program = argc > 0 ? argv[0] : program_invocation_name;
    const std::string id = applist::desktop::ApplicationIdOf(program);
    return Lifecycle(*callbacks, user_data, applist::desktop::FromArguments(id, argc, argv))
        .Run(argc, argv);
}

extern "C" void ui_app_exit(void) {
    if (applist::desktop::g_running != nullptr) {
        applist::desktop::g_running->Exit();
    }
}

// A desktop keeps no windows ready.
extern "C" Evas_Object* app_get_preinitialized_window(const char* /*name*/) {
    return nullptr;
}
