// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "applist/DefaultAppListControl.h"

#include <Ecore.h>
#include <Ecore_Input.h>
#include <algorithm>
#include <string_view>
#include <vector>

#include "CallbackGuard.h"
#include "Log.h"
#include "app.h"

using applist::GuardCallback;

namespace {

using Items = std::vector<AppListItem*>;

// Searches by pointer and not by id: a selected object that is not itself in the list does not have
// neighbours.
Items::const_iterator FindSelected(const Items& items, AppListModel* model) {
    return std::find(items.begin(), items.end(), model->GetSelection());
}

}  // namespace

// The keys of the remote control. The platform gives these names to the keys of other devices, too.
const DefaultAppListControl::KeyAction DefaultAppListControl::KEY_ACTIONS[] = {
    {"XF86Back", &DefaultAppListControl::HandleBack},
    {"XF86Exit", &DefaultAppListControl::HandleExit},
    {"Up", &DefaultAppListControl::HandleUp},
    {"Down", &DefaultAppListControl::HandleDown},
    {"Right", &DefaultAppListControl::HandleRight},
    {"Left", &DefaultAppListControl::HandleLeft},
};

DefaultAppListControl::DefaultAppListControl() {
    LOG_DEBUG("Creating time this will execute OnTimer() in %ds", AUTO_CLOSE_SECONDS);
    {
        PTAutoLock lock(m_timerMutex);
        m_timer = ecore_timer_add(static_cast<double>(AUTO_CLOSE_SECONDS), OnTimer, this);
        if (m_timer == nullptr) {
            LOG_ERROR("Failed to create timer");
        }
    }
    // Acts on the release. The toolkit acts on the press, so it has moved the focus already when Up
    // or Down arrives here.
    m_keyHandler = ecore_event_handler_add(ECORE_EVENT_KEY_UP, OnKey, this);
    if (m_keyHandler == nullptr) {
        LOG_ERROR("Failed to register on key events");
    }
}

DefaultAppListControl::~DefaultAppListControl() {
    if (m_model != nullptr) {
        m_model->RemoveItemSelectionListener(this);
    }
    {
        PTAutoLock lock(m_timerMutex);
        if (m_timer != nullptr) {
            ecore_timer_del(m_timer);
        }
    }
    if (m_keyHandler != nullptr) {
        ecore_event_handler_del(m_keyHandler);
    }
}

void DefaultAppListControl::SetModel(AppListModel* model) {
    m_model = model;
    m_model->AddItemSelectionListener(this);
}

// A change of the selection by the middleware also counts as activity.
void DefaultAppListControl::ItemSelected(AppListModel* /*model*/) {
    PTAutoLock lock(m_timerMutex);
    if (m_timer != nullptr) {
        LOG_DEBUG("Timer has been reset to its full interval: %ds", AUTO_CLOSE_SECONDS);
        ecore_timer_reset(m_timer);
    }
}

void DefaultAppListControl::ResetTimer() {
    PTAutoLock lock(m_timerMutex);
    // m_timer is null after the timer has fired; the toolkit ignores null.
    ecore_timer_reset(m_timer);
}

// CANCEL, because the program is ending: the toolkit deletes the timer.
Eina_Bool DefaultAppListControl::OnTimer(void* data) {
    GuardCallback([data] { static_cast<DefaultAppListControl*>(data)->OnTimer(); });
    return ECORE_CALLBACK_CANCEL;
}

void DefaultAppListControl::OnTimer() {
    LOG_DEBUG("Executed timer function");
    {
        // The toolkit deletes the timer after this call, so it must not be reset or deleted any
        // more.
        PTAutoLock lock(m_timerMutex);
        m_timer = nullptr;
    }
    LOG_DEBUG("Calling app_efl_exit()");
    ui_app_exit();
}

Eina_Bool DefaultAppListControl::OnKey(void* data, int type, void* event) {
    LOG_DEBUG("Executed key event function");
    if (data == nullptr || event == nullptr) {
        LOG_ERROR("Event or data is NULL");
        return ECORE_CALLBACK_PASS_ON;
    }
    if (type != ECORE_EVENT_KEY_UP) {
        return ECORE_CALLBACK_PASS_ON;
    }
    return GuardCallback<Eina_Bool>(ECORE_CALLBACK_PASS_ON, [data, event] {
        return static_cast<DefaultAppListControl*>(data)->OnKey(
            *static_cast<const Ecore_Event_Key*>(event));
    });
}

Eina_Bool DefaultAppListControl::OnKey(const Ecore_Event_Key& event) {
    LOG_DEBUG("Event values: keyname=%s, key=%s", event.keyname, event.key);
    // key is the logical key; keyname is the physical key of the device.
    const std::string_view key = event.key != nullptr ? event.key : "";
    for (const KeyAction& action : KEY_ACTIONS) {
        if (key == action.key) {
            return (this->*action.act)();
        }
    }
    return ECORE_CALLBACK_PASS_ON;
}

// Back and Exit end the program, so they return DONE and no other handler acts on them. All other
// keys are passed on.
Eina_Bool DefaultAppListControl::HandleBack() {
    LOG_DEBUG("Return key has been hit. Closing application");
    ui_app_exit();
    return ECORE_CALLBACK_DONE;
}

Eina_Bool DefaultAppListControl::HandleExit() {
    LOG_DEBUG("Exit key has been hit. Closing application");
    ui_app_exit();
    return ECORE_CALLBACK_DONE;
}

Eina_Bool DefaultAppListControl::HandleUp() {
    LOG_DEBUG("Up key has been hit. Resetting timer to its full interval: %ds", AUTO_CLOSE_SECONDS);
    ResetTimer();
    return ECORE_CALLBACK_PASS_ON;
}

Eina_Bool DefaultAppListControl::HandleDown() {
    LOG_DEBUG("Down key has been hit. Resetting timer to its full interval: %ds",
              AUTO_CLOSE_SECONDS);
    ResetTimer();
    return ECORE_CALLBACK_PASS_ON;
}

// The toolkit does not move the focus of a vertical list with Right and Left, so the model does.
Eina_Bool DefaultAppListControl::HandleRight() {
    LOG_DEBUG("Right key has been hit. Scroll focus down.");
    StepForward();
    LOG_DEBUG("Resetting timer to its full interval: %ds", AUTO_CLOSE_SECONDS);
    ResetTimer();
    return ECORE_CALLBACK_PASS_ON;
}

Eina_Bool DefaultAppListControl::HandleLeft() {
    LOG_DEBUG("Left key has been hit. Scroll focus top.");
    StepBack();
    LOG_DEBUG("Resetting timer to its full interval: %ds", AUTO_CLOSE_SECONDS);
    ResetTimer();
    return ECORE_CALLBACK_PASS_ON;
}

void DefaultAppListControl::StepForward() {
    if (m_model == nullptr) {
        return;
    }
    // Without a selection there is no row to start from.
    const Items items = m_model->GetAllItems();
    const auto found = FindSelected(items, m_model);
    if (found == items.end()) {
        return;
    }
    LOG_DEBUG("Found focused item.");
    auto target = std::next(found);
    if (target == items.end()) {
        LOG_DEBUG("Scrolling item over to top.");
        target = items.begin();
    }
    m_model->SetSelection(*target);
}

void DefaultAppListControl::StepBack() {
    if (m_model == nullptr) {
        return;
    }
    const Items items = m_model->GetAllItems();
    const auto found = FindSelected(items, m_model);
    if (found == items.end()) {
        return;
    }
    LOG_DEBUG("Found focused item.");
    if (found == items.begin()) {
        LOG_DEBUG("Scrolling item over to bottom.");
        m_model->SetSelection(items.back());
    } else {
        m_model->SetSelection(*std::prev(found));
    }
}
