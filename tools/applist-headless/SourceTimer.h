// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <glib.h>
#include <utility>

#include "CallbackGuard.h"

namespace applist::headless {

/// Calls a function once after some real time, in the default main context, unless it is destroyed
/// before. The function may destroy the timer.
class SourceTimer {
public:
    SourceTimer(double seconds, std::function<void()> onTime) : m_onTime(std::move(onTime)) {
        m_id = g_timeout_add(static_cast<guint>(seconds * 1000), OnTime, this);
    }
    ~SourceTimer() {
        if (m_id != 0) {
            g_source_remove(m_id);
        }
    }
    SourceTimer(const SourceTimer&) = delete;
    SourceTimer& operator=(const SourceTimer&) = delete;
    SourceTimer(SourceTimer&&) = delete;
    SourceTimer& operator=(SourceTimer&&) = delete;

private:
    static gboolean OnTime(void* data) {
        auto* timer = static_cast<SourceTimer*>(data);
        timer->m_id = 0;
        const auto onTime = timer->m_onTime;
        GuardCallback([&] { onTime(); });
        return G_SOURCE_REMOVE;
    }

    std::function<void()> m_onTime;
    guint m_id = 0;
};

}  // namespace applist::headless
