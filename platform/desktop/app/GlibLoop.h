// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Ecore.h>
#include <functional>
#include <glib.h>
#include <poll.h>
#include <vector>

namespace applist::desktop {

/// While it lives, GLib's default main context runs on the toolkit's main loop: D-Bus callbacks,
/// timeouts and idle sources are dispatched between two turns of it.
///
/// The toolkit waits in a function that can be replaced. Ours waits for GLib's descriptors and
/// timeouts together with the toolkit's, so nothing is polled and an idle program sleeps. What
/// became ready is not dispatched in there, where the toolkit's clock still stands at the time
/// before the wait, but right after it.
///
/// REQUIRES: made and ended on the main thread, between the toolkit's start and end; one at a time.
class GlibLoop {
public:
    /// beforeRest is called before each wait that may take a quarter of a second or longer and
    /// follows one in which nothing happened: not while a start or a viewer waits for the next
    /// event.
    explicit GlibLoop(std::function<void()> beforeRest = [] {});
    ~GlibLoop();
    GlibLoop(const GlibLoop&) = delete;
    GlibLoop& operator=(const GlibLoop&) = delete;
    GlibLoop(GlibLoop&&) = delete;
    GlibLoop& operator=(GlibLoop&&) = delete;

    /// What the toolkit calls to wait; select(2)'s contract, except that it may report one ready
    /// descriptor too many when GLib has work.
    int Select(int count, fd_set* reads, fd_set* writes, fd_set* exceptions, timeval* timeout);
    /// Runs the callbacks of what the last wait found ready.
    void Dispatch();

private:
    /// Takes the toolkit's descriptors as the first entries of m_descriptors.
    void CollectToolkit(int count, const fd_set* reads, const fd_set* writes,
                        const fd_set* exceptions);
    /// Adds GLib's behind them; returns how many, and GLib's timeout in milliseconds or -1.
    int CollectGlib(int* priority, int* timeout);
    /// Writes the first entries back; returns how many are ready, or -1 for an invalid descriptor.
    int Report(fd_set* reads, fd_set* writes, fd_set* exceptions) const;

    std::function<void()> m_beforeRest;
    GMainContext* m_context;
    Ecore_Select_Function m_replaced;
    Ecore_Idle_Exiter* m_afterWait;
    Ecore_Idle_Enterer* m_beforeWait;
    std::vector<pollfd> m_descriptors;
    size_t m_toolkitCount = 0;
    bool m_ready = false;
    bool m_timeWasUp = false;
};

}  // namespace applist::desktop
