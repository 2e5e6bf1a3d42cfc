// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "support/HeadlessToolkit.h"

#include <Ecore_Evas.h>
#include <Ecore_Input.h>
#include <Efreet.h>
#include <algorithm>
#include <array>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <execinfo.h>
#include <functional>

#include <gtest/gtest.h>

namespace applist::test {
namespace {

void SetEnvironment(const std::filesystem::path& home) {
    setenv("ELM_ENGINE", "buffer", 1);
    setenv("ECORE_NO_SYSTEM_MODULES", "1", 1);
    for (const char* name : {"HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME",
                             "XDG_RUNTIME_DIR", "TMPDIR"}) {
        setenv(name, home.c_str(), 1);
    }
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "DBUS_SESSION_BUS_ADDRESS"}) {
        unsetenv(name);
    }
}

Ecore_Evas* CanvasOf(Evas_Object* window) {
    return ecore_evas_ecore_evas_get(evas_object_evas_get(window));
}

void DrawAll() {
    Eina_List* canvases = ecore_evas_ecore_evas_list_get();
    for (Eina_List* each = canvases; each != nullptr; each = eina_list_next(each)) {
        ecore_evas_manual_render(static_cast<Ecore_Evas*>(eina_list_data_get(each)));
    }
    eina_list_free(canvases);
}

void SendKey(int type, const std::string& key) {
    // The toolkit frees only the event, so its strings are in the same block.
    auto* event =
        static_cast<Ecore_Event_Key*>(calloc(1, sizeof(Ecore_Event_Key) + key.size() + 1));
    char* text = reinterpret_cast<char*>(event + 1);
    std::memcpy(text, key.c_str(), key.size() + 1);
    event->keyname = text;
    event->key = text;
    event->keycode = static_cast<unsigned int>(std::hash<std::string>{}(key));
    ecore_event_add(type, event, nullptr, nullptr);
}

// Skips the wait if the condition holds already.
Eina_Bool OnBeforeWait(void* data) {
    const auto& condition = *static_cast<const std::function<bool()>*>(data);
    if (condition()) {
        ecore_job_add([](void*) {}, nullptr);
    }
    return ECORE_CALLBACK_RENEW;
}

}  // namespace

HeadlessToolkit::HeadlessToolkit(const std::vector<std::filesystem::path>& themes) {
    SetEnvironment(m_home.path());
    eina_init();
    eina_log_print_cb_set(OnLog, this);
    // Without this the first window starts a daemon that outlives the test.
    efreet_cache_disable();
    elm_init(0, nullptr);
    for (const std::filesystem::path& theme : themes) {
        // The toolkit ignores a missing file without an error.
        EXPECT_TRUE(std::filesystem::exists(theme)) << theme;
        elm_theme_overlay_add(nullptr, theme.c_str());
    }
}

HeadlessToolkit::~HeadlessToolkit() {
    elm_shutdown();
    eina_log_print_cb_set(eina_log_print_cb_stderr, nullptr);
    eina_shutdown();
    // The folder is deleted with this object; the next object must not search it.
    unsetenv("TMPDIR");
    for (const std::string& text : m_expected) {
        ADD_FAILURE() << "the toolkit did not complain as expected: " << text;
    }
}

bool HeadlessToolkit::RunUntil(const std::function<bool()>& condition,
                               std::chrono::milliseconds patience) {
    bool late = false;
    const double seconds = std::chrono::duration<double>(patience).count();
    Ecore_Timer* timer = ecore_timer_add(
        seconds,
        [](void* data) -> Eina_Bool {
            *static_cast<bool*>(data) = true;
            return ECORE_CALLBACK_RENEW;
        },
        &late);
    // A turn runs its timers before it waits, so the condition is checked before the wait.
    Ecore_Idle_Enterer* beforeWait = ecore_idle_enterer_add(OnBeforeWait, &condition);
    bool holds = condition();
    while (!holds && !late) {
        ecore_main_loop_iterate_may_block(1);
        holds = condition();
    }
    ecore_idle_enterer_del(beforeWait);
    ecore_timer_del(timer);
    return holds;
}

void HeadlessToolkit::Settle() {
    // Repeats, because events and jobs cause drawing, and drawing creates rows, which raise events.
    constexpr int ROUNDS = 4;
    for (int round = 0; round < ROUNDS; ++round) {
        bool idle = false;
        ecore_idler_add(
            [](void* data) -> Eina_Bool {
                *static_cast<bool*>(data) = true;
                // Without an event the loop would go to sleep straight after its idlers.
                ecore_job_add([](void* /*unused*/) {}, nullptr);
                return ECORE_CALLBACK_CANCEL;
            },
            &idle);
        RunUntil([&idle] { return idle; });
        DrawAll();
    }
}

void HeadlessToolkit::GiveFocus(Evas_Object* window) {
    // A window in memory has the focus from the start without an event. Only a change raises one.
    ecore_evas_focus_set(CanvasOf(window), EINA_FALSE);
    ecore_evas_focus_set(CanvasOf(window), EINA_TRUE);
    Settle();
}

void HeadlessToolkit::TakeFocus(Evas_Object* window) {
    ecore_evas_focus_set(CanvasOf(window), EINA_FALSE);
    Settle();
}

void HeadlessToolkit::PressKey(const std::string& key) {
    SendKey(ECORE_EVENT_KEY_DOWN, key);
    Settle();
}

void HeadlessToolkit::ReleaseKey(const std::string& key) {
    SendKey(ECORE_EVENT_KEY_UP, key);
    Settle();
}

void HeadlessToolkit::QueueKey(const std::string& key, bool down) {
    SendKey(down ? ECORE_EVENT_KEY_DOWN : ECORE_EVENT_KEY_UP, key);
}

void HeadlessToolkit::OnLog(const Eina_Log_Domain* domain, Eina_Log_Level level,
                            const char* /*file*/, const char* function, int /*line*/,
                            const char* format, void* data, va_list arguments) {
    if (level > EINA_LOG_LEVEL_ERR) {
        return;
    }
    std::array<char, 1024> text{};
    static_cast<void>(std::vsnprintf(text.data(), text.size(), format, arguments));
    static_cast<HeadlessToolkit*>(data)->OnError(std::string(domain->name) + ": " + function +
                                                 "() " + text.data());
}

void HeadlessToolkit::OnError(const std::string& text) {
    // Harmless: on a busy machine the frame is drawn later.
    if (text.find("timeout waiting for async rendering") != std::string::npos) {
        return;
    }
    // The focus goes to a row that has just been drawn, and the toolkit looks for something in the
    // row that could take it instead.
    if (text.find("Could not fetch a node located at") != std::string::npos) {
        return;
    }
    // The toolkit logs these errors in two harmless cases: the list focuses a row that exists only
    // to be measured, and it focuses a row that is being removed while the window does not have the
    // focus. In both cases the row is not registered in the focus manager.
    if (text.find("(Elm.Genlist.Item) not registered in manager") != std::string::npos ||
        text.find("_manager_in_chain_set() safety check failed") != std::string::npos) {
        return;
    }
    const auto expected = std::find_if(
        m_expected.begin(), m_expected.end(),
        [&text](const std::string& part) { return text.find(part) != std::string::npos; });
    if (expected != m_expected.end()) {
        m_expected.erase(expected);
        return;
    }
    m_errors.push_back(text);
    ADD_FAILURE() << "toolkit error: " << text;
}

}  // namespace applist::test
