// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "alert-syspopup/AlertPopup.h"

#include <Ecore_Input.h>
#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "CallbackGuard.h"
#include "app.h"

namespace applist::desktop {
namespace {

// Back and Exit of the remote control, and the names that OK has on keyboards and remote controls.
constexpr std::array<std::string_view, 5> CLOSING_KEYS{"XF86Back", "XF86Exit", "Return", "KP_Enter",
                                                       "Select"};

bool Closes(std::string_view key) {
    return std::find(CLOSING_KEYS.begin(), CLOSING_KEYS.end(), key) != CLOSING_KEYS.end();
}

const char* NameOf(Alert::Kind kind) {
    return kind == Alert::Kind::UNAVAILABLE ? "unavailable" : "notification";
}

const char* KeyOf(void* event) {
    return static_cast<Ecore_Event_Key*>(event)->key;
}

Eina_Bool OnPress(void* popup, int, void* event) {
    GuardCallback([&] { static_cast<AlertPopup*>(popup)->KeyPressed(KeyOf(event)); });
    return ECORE_CALLBACK_PASS_ON;
}

Eina_Bool OnRelease(void* popup, int, void* event) {
    GuardCallback([&] { static_cast<AlertPopup*>(popup)->KeyReleased(KeyOf(event)); });
    return ECORE_CALLBACK_PASS_ON;
}

Eina_Bool OnTimeOver(void* popup) {
    GuardCallback([popup] { static_cast<AlertPopup*>(popup)->TimeOver(); });
    // The toolkit deletes the timer; TimeOver() has given up its ownership.
    return ECORE_CALLBACK_CANCEL;
}

}  // namespace

AlertPopup::AlertPopup(std::string title, double shownSeconds)
    : m_title(std::move(title)), m_shownSeconds(shownSeconds) {}

void AlertPopup::Create() {
    m_keys.push_back(EventHandler::Behind(ECORE_EVENT_KEY_DOWN, OnPress, this));
    m_keys.push_back(EventHandler::Behind(ECORE_EVENT_KEY_UP, OnRelease, this));
    RestartTimer();
}

void AlertPopup::Terminate() {
    m_timer.reset();
    m_keys.clear();
    m_window.reset();
}

void AlertPopup::Launch(const app_control_s& request) {
    const std::optional<Alert> alert = ReadAlert(request);
    if (!alert) {
        LOG_ERROR("Launch request refused: its extra data does not contain \"text\"");
    } else if (m_window || (m_window = AlertWindow::Create(m_title.c_str()))) {
        m_window->Show(*alert);
        LOG_DEBUG("Showing as %s: %s", NameOf(alert->kind), alert->text.c_str());
        RestartTimer();
    } else {
        LOG_ERROR("Cannot open a display to show the alert: %s", alert->text.c_str());
    }
    // A program without a window cannot show anything and does not receive keys.
    if (!m_window) {
        ui_app_exit();
    }
}

void AlertPopup::KeyPressed(std::string_view key) {
    m_pressed = key;
}

// A key that was pressed before the popup opened must not close it when it is released.
void AlertPopup::KeyReleased(std::string_view key) {
    if (key == std::exchange(m_pressed, {}) && Closes(key)) {
        LOG_DEBUG("Closed by the key %s", std::string(key).c_str());
        ui_app_exit();
    }
}

// release() and not reset(), because the toolkit deletes the timer when its callback does not renew
// it.
void AlertPopup::TimeOver() {
    static_cast<void>(m_timer.release());
    LOG_DEBUG("Closed after its time");
    ui_app_exit();
}

void AlertPopup::RestartTimer() {
    m_timer.reset(ecore_timer_add(m_shownSeconds, OnTimeOver, this));
}

}  // namespace applist::desktop
