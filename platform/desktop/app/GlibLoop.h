// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Ecore.h>
#include <functional>
#include <glib.h>
#include <poll.h>
#include <vector>

namespace applist::desktop {

/// Runs GLib's default main context on the toolkit's main loop while it exists: D-Bus callbacks,
/// timeouts and idle sources are dispatched between two iterations of that loop.
///
/// It replaces the toolkit's select function by one that waits for the descriptors and timeouts of
/// both libraries. Nothing is polled, so an idle program sleeps. GLib sources are not dispatched in
/// that function but right after it, because until then the toolkit's clock still shows the time
/// before the wait.
///
/// REQUIRES: created and destroyed on the main thread while the toolkit is initialised; at most one
/// at a time.
class GlibLoop {
public:
    /// beforeIdle is called when the program is idle: before a wait that may take 250 ms or longer,
    /// if the previous wait ended by its timeout.
    explicit GlibLoop(std::function<void()> beforeIdle = [] {});
    ~GlibLoop();
    GlibLoop(const GlibLoop&) = delete;
    GlibLoop& operator=(const GlibLoop&) = delete;
    GlibLoop(GlibLoop&&) = delete;
    GlibLoop& operator=(GlibLoop&&) = delete;

    /// Select function for the toolkit. Follows select(2), except that it may report one ready
    /// descriptor too many if GLib has work to dispatch.
    int Select(int count, fd_set* reads, fd_set* writes, fd_set* exceptions, timeval* timeout);
    /// Dispatches the GLib sources that the last wait found ready.
    void Dispatch();

private:
    /// Stores the toolkit's descriptors as the first entries of m_descriptors.
    void CollectToolkit(int count, const fd_set* reads, const fd_set* writes,
                        const fd_set* exceptions);
    /// Appends GLib's descriptors. Returns their number, and in timeout GLib's timeout in
    /// milliseconds or -1.
    int CollectGlib(int* priority, int* timeout);
    /// Writes the results of the toolkit's descriptors back to its sets. Returns the number of
    /// ready descriptors, or -1 if one is invalid.
    int Report(fd_set* reads, fd_set* writes, fd_set* exceptions) const;

    std::function<void()> m_beforeIdle;
    GMainContext* m_context;
    Ecore_Select_Function m_replaced;
    Ecore_Idle_Exiter* m_afterWait;
    Ecore_Idle_Enterer* m_beforeWait;
    std::vector<pollfd> m_descriptors;
    size_t m_toolkitCount = 0;
    bool m_ready = false;
    bool m_timedOut = false;
};

}  // namespace applist::desktop
