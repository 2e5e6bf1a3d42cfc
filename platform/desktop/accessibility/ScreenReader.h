// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>

#include <gio/gio.h>

namespace applist::desktop {

/// Whether a screen reader is on, as the session bus tells it, from the first turn of the main loop
/// on. Asks nobody who is not there: nothing is started for it, and a bus that hangs holds up
/// nothing. Main thread only.
class ScreenReader {
public:
    /// Called when it is turned on and when it is turned off again; it is off at first.
    using Listener = std::function<void(bool on)>;

    explicit ScreenReader(Listener listener);
    ~ScreenReader();
    ScreenReader(const ScreenReader&) = delete;
    ScreenReader& operator=(const ScreenReader&) = delete;
    ScreenReader(ScreenReader&&) = delete;
    ScreenReader& operator=(ScreenReader&&) = delete;

    /// The bus has the status, or not: takes over the proxy, which is null then.
    void Connected(GDBusProxy* status);
    /// The status, or who gives it, may have changed.
    void Update();

private:
    Listener m_listener;
    GCancellable* m_connecting;
    GDBusProxy* m_status = nullptr;
    bool m_on = false;
};

}  // namespace applist::desktop
