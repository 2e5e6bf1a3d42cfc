// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>

#include "display/XAnswers.h"
#include "log/ToolkitMessages.h"
#include "theme/ThemeSwitch.h"

namespace applist::desktop {

/// Initialises the toolkit and configures it for a program that draws one popup and leaves no
/// helper processes or files. Main thread only, at most one at a time.
class Toolkit {
public:
    /// The arguments must outlive the object. Sets ECORE_NO_SYSTEM_MODULES and
    /// ECORE_EVAS_FORCE_SYNC_RENDER in the environment unless they are already set. Sets up the
    /// memory of frames and disables the cache of desktop files.
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

private:
    ToolkitMessages m_messages;
    bool m_started;
    std::optional<XAnswers> m_answers;
    bool m_connected = false;
    std::optional<ThemeSwitch> m_themeSwitch;
};

}  // namespace applist::desktop
