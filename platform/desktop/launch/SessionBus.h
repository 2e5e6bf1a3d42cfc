// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

#include <gio/gio.h>

namespace applist::desktop {

/// Returns true if the environment names a session bus or a bus socket exists at the default path.
/// Call this before GIO connects: without a session bus, GIO starts one, and that process would
/// outlive the program. Any thread.
bool HasSessionBus();

/// Limits the duration of synchronous GIO calls that do not have a timeout parameter. A separate
/// thread cancels the cancellable when the time is over, unless this object is destroyed first.
/// Works only for calls that check their cancellable while they wait;
/// g_dbus_connection_flush_sync() does not.
class Deadline {
public:
    explicit Deadline(std::chrono::milliseconds time)
        : m_cancellable(g_cancellable_new()),
          m_thread([this, time](const std::stop_token& stop) { Watch(stop, time); }) {}
    ~Deadline() {
        m_thread.request_stop();
        m_thread.join();
        g_object_unref(m_cancellable);
    }
    Deadline(const Deadline&) = delete;
    Deadline& operator=(const Deadline&) = delete;
    Deadline(Deadline&&) = delete;
    Deadline& operator=(Deadline&&) = delete;

    /// The cancellable to pass to the calls; owned by this object.
    GCancellable* cancellable() const { return m_cancellable; }

private:
    void Watch(const std::stop_token& stop, std::chrono::milliseconds time) {
        std::unique_lock lock(m_mutex);
        m_ended.wait_for(lock, stop, time, [] { return false; });
        if (!stop.stop_requested()) {
            g_cancellable_cancel(m_cancellable);
        }
    }

    GCancellable* m_cancellable;
    std::mutex m_mutex;
    std::condition_variable_any m_ended;
    // The last member, because the thread uses all others.
    std::jthread m_thread;
};

}  // namespace applist::desktop
