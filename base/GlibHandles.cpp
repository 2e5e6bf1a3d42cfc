// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "GlibHandles.h"

#include <algorithm>
#include <limits>

#include <glib-unix.h>

namespace applist {
namespace {

Registration Attach(GSource* source) {
    g_source_attach(source, nullptr);
    return Registration([source] {
        // The context has its own reference, which this call drops. The second call drops that of
        // the creator.
        g_source_destroy(source);
        g_source_unref(source);
    });
}

}  // namespace

// The library keeps a running callback until it returns, so an action may end its own registration.
Registration RunOn(GSource* source, std::function<bool()> action) {
    using Action = std::function<bool()>;
    g_source_set_callback(
        source,
        [](void* data) noexcept -> gboolean {
            return (*static_cast<Action*>(data))() ? TRUE : FALSE;
        },
        new Action(std::move(action)), [](void* data) { delete static_cast<Action*>(data); });
    return Attach(source);
}

Registration WhenReadable(int file, std::function<void(GIOCondition)> action) {
    using Action = std::function<void(GIOCondition)>;
    // A hang-up and an error wake as well, because the next read reports them.
    GSource* source =
        g_unix_fd_source_new(file, static_cast<GIOCondition>(G_IO_IN | G_IO_HUP | G_IO_ERR));
    const GUnixFDSourceFunc run = [](int, GIOCondition condition, void* data) noexcept -> gboolean {
        (*static_cast<Action*>(data))(condition);
        return G_SOURCE_CONTINUE;
    };
    g_source_set_callback(source, G_SOURCE_FUNC(run), new Action(std::move(action)),
                          [](void* data) { delete static_cast<Action*>(data); });
    return Attach(source);
}

Registration RunAfter(std::chrono::milliseconds delay, std::function<void()> action) {
    // The interval of a GLib timeout is an unsigned 32-bit number.
    constexpr std::chrono::milliseconds::rep LONGEST = std::numeric_limits<unsigned>::max();
    const auto milliseconds = std::clamp<std::chrono::milliseconds::rep>(delay.count(), 0, LONGEST);
    return RunOn(g_timeout_source_new(static_cast<unsigned>(milliseconds)),
                 [action = std::move(action)] {
                     action();
                     return false;
                 });
}

}  // namespace applist
