// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <mutex>
#include <string>
#include <vector>

#include "recording/Traffic.h"

namespace applist::headless {

/// Observes the messages of the application's connection. For the main thread; the bus library's
/// thread only calls Take().
class Traffic {
public:
    struct Counts {
        /// Calls received and events sent.
        int calls = 0;
        int events = 0;
        /// The unique names of the connected middlewares, in the order of their connection.
        std::vector<std::string> partners;
    };

    /// Observes from now on. Calls onChange in the default main context after each message,
    /// possibly after this object has been destroyed. connection must outlive this object.
    Traffic(GDBusConnection* connection, std::function<void()> onChange);

    Counts Read() const;

private:
    void Take(const sim::RecordedMessage& message);

    std::function<void()> m_onChange;
    mutable std::mutex m_mutex;
    Counts m_counts;
    // The last member, because its callback uses the others.
    sim::TrafficTap m_tap;
};

}  // namespace applist::headless
