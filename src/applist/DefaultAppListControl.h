// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "PTMutex.h"
#include "applist/AppListControl.h"
#include "applist/AppListModel.h"

// Forward declarations of the toolkit's types, so that users of this header need not include the
// toolkit.
typedef struct _Eo_Opaque Ecore_Timer;
typedef struct _Ecore_Event_Handler Ecore_Event_Handler;
typedef struct _Ecore_Event_Key Ecore_Event_Key;
typedef unsigned char Eina_Bool;

/// Handles the keys that the list widget does not handle, and closes the application after a time
/// without input.
///
/// Back and Exit close the application. Right and Left select the next and the previous item and
/// wrap around. The application closes AUTO_CLOSE_SECONDS after the latest of: its start, a release
/// of Up, Down, Right or Left, and a change of the selection. Keys act on release. Main thread
/// only, while the toolkit is running.
class DefaultAppListControl : public AppListControl, public ItemSelectionListener {
public:
    static constexpr int AUTO_CLOSE_SECONDS = 65;

    /// Starts the timer and listens to keys. If either fails, an error is logged and the control
    /// works without it.
    DefaultAppListControl();
    ~DefaultAppListControl() override;
    DefaultAppListControl(const DefaultAppListControl&) = delete;
    DefaultAppListControl& operator=(const DefaultAppListControl&) = delete;
    DefaultAppListControl(DefaultAppListControl&&) = delete;
    DefaultAppListControl& operator=(DefaultAppListControl&&) = delete;

    void SetModel(AppListModel* model) override;
    /// Restarts the timer on every change of the selection.
    void ItemSelected(AppListModel* model) override;

    /// Restarts the timer if it is running.
    void ResetTimer();

    /// Callbacks for the toolkit; data is the control.
    static Eina_Bool OnTimer(void* data);
    static Eina_Bool OnKey(void* data, int type, void* event);

private:
    /// The action of one key. Its result tells the toolkit whether to call further handlers.
    struct KeyAction {
        const char* key;
        Eina_Bool (DefaultAppListControl::*act)();
    };
    static const KeyAction KEY_ACTIONS[];

    void OnTimer();
    Eina_Bool OnKey(const Ecore_Event_Key& event);
    Eina_Bool HandleBack();
    Eina_Bool HandleExit();
    Eina_Bool HandleUp();
    Eina_Bool HandleDown();
    Eina_Bool HandleRight();
    Eina_Bool HandleLeft();
    /// Select the next or previous item. Do nothing if the selected item is not listed.
    void StepForward();
    void StepBack();

    AppListModel* m_model = nullptr;
    Ecore_Timer* m_timer = nullptr;
    PTMutex m_timerMutex;
    Ecore_Event_Handler* m_keyHandler = nullptr;
};
