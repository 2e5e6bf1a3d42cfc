// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "log/LogWriter.h"

namespace applist::desktop {

/// The toolkit, started and configured for a program that draws one popup and leaves nothing
/// behind. Main thread only, one at a time.
class Toolkit {
public:
    /// The arguments must outlive the object. Sets ECORE_NO_SYSTEM_MODULES and
    /// ECORE_EVAS_FORCE_SYNC_RENDER in the environment, where they are not set, and switches off
    /// shared memory with the display and the cache of desktop files.
    Toolkit(int argc, char** argv);
    ~Toolkit();
    Toolkit(const Toolkit&) = delete;
    Toolkit& operator=(const Toolkit&) = delete;
    Toolkit(Toolkit&&) = delete;
    Toolkit& operator=(Toolkit&&) = delete;

    /// False when the toolkit could not be started; then nothing of it may be used.
    bool Started() const { return m_started; }
    /// False when windows cannot be shown: the toolkit has to draw on X11 or Wayland, and neither
    /// can be reached. REQUIRES: Started().
    static bool HasDisplay();

private:
    ToolkitMessages m_messages;
    bool m_started;
};

}  // namespace applist::desktop
