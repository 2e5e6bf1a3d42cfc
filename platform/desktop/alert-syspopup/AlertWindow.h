// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Evas.h>
#include <memory>
#include <optional>
#include <string>

#include "launch/LaunchProtocol.h"

namespace applist::desktop {

/// The content of an alert, from a launch request.
struct Alert {
    enum class Kind { NOTIFICATION, UNAVAILABLE };
    Kind kind = Kind::NOTIFICATION;
    /// UTF-8 plain text. Markup is not interpreted.
    std::string text;
};

/// Reads the extra data "text" and "type". Returns nothing if the text is missing or empty. Any
/// type other than "unavailable" is a notification, so that alerts from newer programs are still
/// shown.
std::optional<Alert> ReadAlert(const app_control_s& request);

/// The alert's window: a panel over the running broadcast. Main thread only, while the toolkit is
/// running.
class AlertWindow {
public:
    /// Creates the window without an alert. Returns null if there is no display.
    static std::unique_ptr<AlertWindow> Create(const char* title);
    ~AlertWindow();
    AlertWindow(const AlertWindow&) = delete;
    AlertWindow& operator=(const AlertWindow&) = delete;
    AlertWindow(AlertWindow&&) = delete;
    AlertWindow& operator=(AlertWindow&&) = delete;

    /// Shows the alert and replaces the previous one.
    void Show(const Alert& alert);
    /// For the toolkit's callback: another theme has been loaded, which shows the texts but not yet
    /// the kind of the alert.
    void ShowKind();

    /// The toolkit's objects, owned by this object.
    Evas_Object* window() const { return m_window; }
    Evas_Object* panel() const { return m_panel; }

private:
    explicit AlertWindow(Evas_Object* window);

    Evas_Object* m_window;
    Evas_Object* m_panel;
    Alert::Kind m_kind = Alert::Kind::NOTIFICATION;
};

}  // namespace applist::desktop
