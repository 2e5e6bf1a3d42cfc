// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Evas.h>
#include <memory>

#include "alert-syspopup/Alert.h"

namespace applist::desktop {

/// The alert on the screen: a panel over the running broadcast. Main thread only, between the
/// toolkit's start and its end.
class AlertWindow {
public:
    /// Makes the window, with nothing in it yet; null where there is no display.
    static std::unique_ptr<AlertWindow> Create(const char* title);
    ~AlertWindow();
    AlertWindow(const AlertWindow&) = delete;
    AlertWindow& operator=(const AlertWindow&) = delete;
    AlertWindow(AlertWindow&&) = delete;
    AlertWindow& operator=(AlertWindow&&) = delete;

    /// Shows the alert in place of what was shown before.
    void Show(const Alert& alert);

    /// The toolkit's objects; they stay this object's.
    Evas_Object* window() const { return m_window; }
    Evas_Object* panel() const { return m_panel; }

private:
    explicit AlertWindow(Evas_Object* window);

    Evas_Object* m_window;
    Evas_Object* m_panel;
};

}  // namespace applist::desktop
