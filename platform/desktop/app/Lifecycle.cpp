// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "app/Lifecycle.h"

#include <Elementary.h>
#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <memory>
#include <string_view>
#include <utility>

#include <glib-unix.h>

#include "CallbackGuard.h"
#include "Log.h"
#include "accessibility/ScreenReader.h"
#include "accessibility/Speech.h"
#include "accessibility/SpokenNames.h"
#include "app/GlibLoop.h"
#include "app/PreparedProcess.h"
#include "app/SettingsWatch.h"
#include "app/SpareMemory.h"
#include "app/Toolkit.h"
#include "data/FilePaths.h"
#include "data/KeyTable.h"
#include "display/Frames.h"
#include "display/Keyboard.h"
#include "display/Windows.h"
#include "launch/LaunchProtocol.h"
#include "launch/SingleInstance.h"
#include "list/ListSteps.h"
#include "lock/SelfLock.h"
#include "log/LogWriter.h"

namespace applist::desktop {
namespace {

// Time for a slow partner on the bus to read the viewer's choice. A garbage collection delays it by
// about 200 ms.
constexpr double LEAVE_SECONDS = 0.5;

// For ui_app_exit(), which does not have an argument.
Lifecycle* g_running = nullptr;

// The bus passes this argument when it starts a program, and sends the launch request afterwards.
bool IsServiceStart(int argc, const char* const* argv) {
    return std::any_of(argv, argv + argc, [](const char* argument) {
        return std::string_view(argument) == SERVICE_ARGUMENT;
    });
}

KeyTable ReadKeys() {
    KeyTableReading reading = ReadKeyTable(KeyTablePath());
    for (const std::string& problem : reading.problems) {
        LOG_ERROR("%s", problem.c_str());
    }
    return std::move(reading.table);
}

void OnFirstTurn(void* lifecycle) {
    GuardCallback([lifecycle] { static_cast<Lifecycle*>(lifecycle)->Started(); });
}

gboolean OnEndSignal(void*) {
    // Only ends the loop, so that everything is released in the usual order.
    elm_exit();
    return G_SOURCE_CONTINUE;
}

// Ends the loop on SIGTERM and SIGINT while it exists. The toolkit handles both signals as well,
// but ignores them permanently if it could not create its signal pipe. Afterwards the program is
// ending, and both signals are ignored: the bus library raises SIGTERM when the system bus is lost,
// and a second signal would turn a normal end into a death by signal.
class EndSignals {
public:
    EndSignals() = default;
    ~EndSignals() {
        g_source_remove(m_terminate);
        g_source_remove(m_interrupt);
        static_cast<void>(std::signal(SIGTERM, SIG_IGN));
        static_cast<void>(std::signal(SIGINT, SIG_IGN));
    }
    EndSignals(const EndSignals&) = delete;
    EndSignals& operator=(const EndSignals&) = delete;
    EndSignals(EndSignals&&) = delete;
    EndSignals& operator=(EndSignals&&) = delete;

private:
    guint m_terminate = g_unix_signal_add(SIGTERM, OnEndSignal, nullptr);
    guint m_interrupt = g_unix_signal_add(SIGINT, OnEndSignal, nullptr);
};

// What connects a running application with the screen and the viewer's settings, in the order of
// creation.
class ScreenParts {
public:
    ScreenParts(Lifecycle& lifecycle, Toolkit& toolkit)
        : m_toolkit(toolkit),
          m_windows({[&lifecycle](bool visible) { lifecycle.VisibilityChanged(visible); },
                     [&lifecycle] { lifecycle.Exit(); }, LockAfterFirstFrame}) {
        if (toolkit.window() != nullptr) {
            m_windows.Added(toolkit.window());
        }
    }

    // Hides the windows and releases the keyboard. Returns true if a window was shown.
    bool Leave() {
        m_keyboard.Close();
        m_speech.Stop();
        return m_windows.Hide();
    }

private:
    Toolkit& m_toolkit;
    SpareMemory m_memory;
    GlibLoop m_glib{[this] { m_memory.GiveBack(); }};
    EndSignals m_endSignals;
    Windows m_windows;
    ListSteps m_steps{m_windows};
    Keyboard m_keyboard{m_windows, ReadKeys()};
    ThemeSignals m_signals;
    KeyFrames m_frames{m_windows};
    SpokenNames m_names;
    Speech m_speech;
    SettingsWatch m_settings{[this] {
        m_toolkit.UpdateTheme();
        m_speech.Update();
    }};
    ScreenReader m_reader{[this](bool on) { m_names.Turn(on); }};
};

Eina_Bool OnWaitOver(void* lifecycle) {
    GuardCallback([lifecycle] { static_cast<Lifecycle*>(lifecycle)->WaitOver(); });
    return ECORE_CALLBACK_CANCEL;
}

}  // namespace

Lifecycle::Lifecycle(const ui_app_callbacks& callbacks, void* userData, std::string applicationId,
                     std::optional<app_control_s> launch)
    : m_callbacks(callbacks),
      m_userData(userData),
      m_applicationId(std::move(applicationId)),
      m_launch(std::move(launch)) {}

Lifecycle::Result Lifecycle::Run(int argc, char** argv) {
    g_running = this;
    const Result result = RunToolkit(argc, argv);
    g_running = nullptr;
    return result;
}

Lifecycle::Result Lifecycle::RunToolkit(int argc, char** argv) {
    // Claims the bus name before the toolkit starts: a later instance only hands over its request
    // and does not need a display.
    std::optional<SingleInstance> instance(std::in_place, m_applicationId,
                                           [this](app_control_s& request) { Relaunched(request); });
    if (instance->role() == SingleInstance::Role::Later) {
        return HandOver(*instance);
    }
    std::unique_ptr<Toolkit> toolkit = PreparedProcess::TakeToolkit();
    if (toolkit == nullptr) {
        toolkit = std::make_unique<Toolkit>(argc, argv);
        if (!toolkit->Started()) {
            return TOOLKIT_NOT_STARTED;
        }
        if (!toolkit->Connect()) {
            LOG_ERROR("Cannot reach a display; DISPLAY or WAYLAND_DISPLAY must name one");
            return NO_DISPLAY;
        }
    }
    m_toolkit = toolkit.get();
    return RunOnScreen(instance);
}

Lifecycle::Result Lifecycle::RunOnScreen(std::optional<SingleInstance>& instance) {
    ScreenParts parts(*this, *m_toolkit);
    // The lambda refers to locals, so it is only called while the loop below runs.
    m_leaveScreen = [&] {
        instance->Release();
        return parts.Leave();
    };
    const Result result = RunApplication();
    // A request for this instance would be lost from here on, so later launches must start a new
    // instance.
    instance.reset();
    // terminate is only called if create succeeded.
    if (m_created) {
        m_callbacks.terminate(m_userData);
    }
    return result;
}

Lifecycle::Result Lifecycle::HandOver(SingleInstance& first) {
    return !m_launch || first.HandOver(*m_launch) ? ENDED : HAND_OVER_FAILED;
}

Lifecycle::Result Lifecycle::RunApplication() {
    if (!m_callbacks.create(m_userData)) {
        LOG_ERROR("%s refused to start", m_applicationId.c_str());
        return CREATE_REFUSED;
    }
    m_created = true;
    // Runs inside the loop, because elm_exit() before elm_run() has no effect.
    if (ecore_job_add(OnFirstTurn, this) == nullptr) {
        LOG_ERROR("Cannot start the loop of %s", m_applicationId.c_str());
        return FAILED;
    }
    m_looping = true;
    elm_run();
    m_looping = false;
    if (m_wait != nullptr) {
        ecore_timer_del(std::exchange(m_wait, nullptr));
    }
    return ENDED;
}

void Lifecycle::Started() {
    DeliverLaunch();
    // The application may have asked for the exit in create, when the loop could not end yet.
    if (m_exitAsked) {
        Leave();
    }
}

void Lifecycle::DeliverLaunch() {
    if (auto launch = std::exchange(m_launch, std::nullopt)) {
        m_callbacks.app_control(&*launch, m_userData);
    }
}

void Lifecycle::Exit() {
    m_exitAsked = true;
    if (m_looping) {
        Leave();
    }
}

void Lifecycle::Leave() {
    if (std::exchange(m_leaving, true)) {
        return;
    }
    // Without a visible window, or if the timer cannot be created, the program ends at once.
    m_wait = m_leaveScreen() ? ecore_timer_add(LEAVE_SECONDS, OnWaitOver, this) : nullptr;
    if (m_wait == nullptr) {
        elm_exit();
    }
}

// The toolkit deletes the timer after this callback.
void Lifecycle::WaitOver() {
    m_wait = nullptr;
    elm_exit();
}

void Lifecycle::Relaunched(app_control_s& request) {
    // If create runs the main context, a request can arrive before the application is built.
    if (!m_created || m_leaving) {
        return;
    }
    // A request that the program was started with precedes a later one.
    DeliverLaunch();
    m_callbacks.app_control(&request, m_userData);
}

Evas_Object* Lifecycle::TakeWindow(const std::string& name) {
    return m_toolkit != nullptr ? m_toolkit->TakeWindow(name) : nullptr;
}

void Lifecycle::VisibilityChanged(bool visible) {
    // The windows are hidden on purpose while the program ends, which is not a pause.
    if (m_leaving) {
        return;
    }
    (visible ? m_callbacks.resume : m_callbacks.pause)(m_userData);
}

}  // namespace applist::desktop

namespace {

using applist::desktop::Lifecycle;

bool IsComplete(const ui_app_callbacks* callbacks) {
    return callbacks != nullptr && callbacks->create != nullptr &&
           callbacks->terminate != nullptr && callbacks->pause != nullptr &&
           callbacks->resume != nullptr && callbacks->app_control != nullptr;
}

int RunApplication(int argc, char** argv, const ui_app_callbacks& callbacks, void* userData) {
    using namespace applist::desktop;
    TakeGlibMessages();
    const std::string id = ApplicationIdOf(argc > 0 ? argv[0] : program_invocation_name);
    // A start by the bus is not a request, so its arguments are not read as one.
    std::optional<app_control_s> launch;
    if (!IsServiceStart(argc, argv)) {
        launch = FromArguments(id, argc, argv);
    }
    return Lifecycle(callbacks, userData, id, launch).Run(argc, argv);
}

}  // namespace

extern "C" int ui_app_main(int argc, char** argv, ui_app_callbacks* callbacks, void* user_data) {
    if (!IsComplete(callbacks)) {
        LOG_ERROR("ui_app_main: a callback is missing");
        return Lifecycle::NO_CALLBACKS;
    }
    return applist::GuardCallback<int>(
        Lifecycle::FAILED, [&] { return RunApplication(argc, argv, *callbacks, user_data); });
}

extern "C" void ui_app_exit(void) {
    // The pointer is only set while ui_app_main() runs.
    if (applist::desktop::g_running != nullptr) {
        applist::desktop::g_running->Exit();
    }
}

extern "C" Evas_Object* app_get_preinitialized_window(const char* name) {
    using applist::desktop::g_running;
    return g_running != nullptr && name != nullptr ? g_running->TakeWindow(name) : nullptr;
}
