// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>

#include <gio/gio.h>

namespace applist::desktop {

/// Watches on the session bus whether a screen reader is on. Starts with the first main-loop
/// iteration. Never auto-starts the accessibility service and never blocks. Main thread only.
class ScreenReader {
public:
    /// Called when the screen reader is turned on or off. The initial state is off.
    using Listener = std::function<void(bool on)>;

    explicit ScreenReader(Listener listener);
    ~ScreenReader();
    ScreenReader(const ScreenReader&) = delete;
    ScreenReader& operator=(const ScreenReader&) = delete;
    ScreenReader(ScreenReader&&) = delete;
    ScreenReader& operator=(ScreenReader&&) = delete;

    /// For the GIO callback: the connection attempt has ended. Takes ownership of status, which is
    /// null if the attempt failed.
    void Connected(GDBusProxy* status);
    /// For the GIO callbacks: the property or its owner may have changed.
    void Update();

private:
    Listener m_listener;
    GCancellable* m_connecting;
    GDBusProxy* m_status = nullptr;
    bool m_on = false;
};

}  // namespace applist::desktop
