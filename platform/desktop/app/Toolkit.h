// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Evas.h>
#include <optional>
#include <string>

#include "app/ToolkitMessages.h"
#include "display/Theme.h"
#include "toolkit-internals/XAnswers.h"

namespace applist::desktop {

/// Initialises the toolkit and configures it for a program that draws one popup and leaves no
/// helper processes or files. Main thread only, at most one at a time.
class Toolkit {
public:
    /// The arguments must outlive the object. Calls SetEnvironment(), sets up the memory of frames
    /// and disables the cache of desktop files.
    Toolkit(int argc, char** argv);
    ~Toolkit();
    Toolkit(const Toolkit&) = delete;
    Toolkit& operator=(const Toolkit&) = delete;
    Toolkit(Toolkit&&) = delete;
    Toolkit& operator=(Toolkit&&) = delete;

    /// Returns false if the toolkit could not be initialised; it must not be used then.
    bool Started() const { return m_started; }
    /// Connects to the X server unless the toolkit is to draw on Wayland or in memory. Returns
    /// false if windows cannot be shown: the toolkit is to draw on X11 or Wayland, but neither
    /// accepts connections. REQUIRES: Started().
    bool Connect();
    /// Loads another theme if the viewer's settings select one.
    void UpdateTheme() { m_themeSwitch->Update(); }

    /// Creates the window that the application of this name will ask for, and draws a list in it
    /// once without showing it. The toolkit keeps the theme's groups, the fonts and the letters in
    /// memory from then on; the window is empty again and has the size of a new one. There is no
    /// window if the display has gone. REQUIRES: connected to an X server.
    void PrepareWindow(const std::string& name);
    /// The prepared window, or null. It belongs to this object until it is taken.
    Evas_Object* window() const { return m_window; }
    /// Returns the prepared window, which then belongs to the caller; null if there is none or it
    /// has another name.
    Evas_Object* TakeWindow(const std::string& name);

    /// Sets ECORE_NO_SYSTEM_MODULES and ECORE_EVAS_FORCE_SYNC_RENDER in the environment unless they
    /// are already set.
    static void SetEnvironment();

private:
    ToolkitMessages m_messages;
    bool m_started;
    std::optional<XAnswers> m_answers;
    bool m_connected = false;
    std::optional<ThemeSwitch> m_themeSwitch;
    Evas_Object* m_window = nullptr;
};

}  // namespace applist::desktop
