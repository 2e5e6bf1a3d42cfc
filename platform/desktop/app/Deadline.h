// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

#include <gio/gio.h>

namespace applist::desktop {

/// Bounds those synchronous GIO calls that have no timeout of their own and look at their
/// cancellable while they wait: cancels them from a thread of its own when its time is over before
/// its life. (g_dbus_connection_flush_sync() takes a cancellable and does not look at it.)
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

    /// For the calls to be bounded; lives as long as this object.
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
    // Last, since it uses the others.
    std::jthread m_thread;
};

}  // namespace applist::desktop
