// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "PTMutex.h"
#include "applist/AppListControl.h"
#include "applist/AppListModel.h"

// The toolkit's own names, so that whoever only creates a control need not include the toolkit.
typedef struct _Eo_Opaque Ecore_Timer;
typedef struct _Ecore_Event_Handler Ecore_Event_Handler;
typedef struct _Ecore_Event_Key Ecore_Event_Key;
typedef unsigned char Eina_Bool;

/// The keys that the list widget leaves alone, and the end of the program when nobody presses any.
///
/// Back and Exit close the application, Right and Left step through the items and wrap round. The
/// application closes by itself AUTO_CLOSE_SECONDS after it was built, after the last of the keys
/// Up, Down, Right and Left, or after the last change of the selection, whichever came last. Keys
/// act when they are released. Main thread only, with the toolkit running.
class DefaultAppListControl : public AppListControl, public ItemSelectionListener {
public:
    static constexpr int AUTO_CLOSE_SECONDS = 65;

    /// Starts the timer and listens to the keys. A failure of either is logged, and the control
    /// goes on without it.
    DefaultAppListControl();
    ~DefaultAppListControl() override;
    DefaultAppListControl(const DefaultAppListControl&) = delete;
    DefaultAppListControl& operator=(const DefaultAppListControl&) = delete;
    DefaultAppListControl(DefaultAppListControl&&) = delete;
    DefaultAppListControl& operator=(DefaultAppListControl&&) = delete;

    void SetModel(AppListModel* model) override;
    /// Restarts the timer, whoever moved the selection.
    void ItemSelected(AppListModel* model) override;

    /// Restarts the timer; without one this has no effect.
    void ResetTimer();

    /// What the toolkit calls, with the control as data.
    static Eina_Bool OnTimer(void* data);
    static Eina_Bool OnKey(void* data, int type, void* event);

private:
    /// What one key does; the result says whether other handlers hear of it.
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
    /// Selects the item after, or before, the selected one; nothing when that is not listed.
    void StepForward();
    void StepBack();

    AppListModel* m_model = nullptr;
    Ecore_Timer* m_timer = nullptr;
    PTMutex m_timerMutex;
    Ecore_Event_Handler* m_keyHandler = nullptr;
};
