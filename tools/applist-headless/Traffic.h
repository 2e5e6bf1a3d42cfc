// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gio/gio.h>

namespace applist::headless {

/// Observes the messages of the application's connection. The bus library's thread calls the
/// filter; all functions here are for the main thread.
class Traffic {
public:
    struct Counts {
        /// Calls received and events sent.
        int calls = 0;
        int events = 0;
        /// The unique names of the connected middlewares, in the order of their connection.
        std::vector<std::string> partners;
    };

    /// Observes from now on. Calls onChange in the default main context after the partners have
    /// changed, possibly after this object has been destroyed.
    Traffic(GDBusConnection* connection, std::function<void()> onChange);
    ~Traffic();
    Traffic(const Traffic&) = delete;
    Traffic& operator=(const Traffic&) = delete;

    Counts Read() const;

private:
    struct Shared;
    static GDBusMessage* OnMessage(GDBusConnection* connection, GDBusMessage* message, int incoming,
                                   void* data);

    GDBusConnection* m_connection;
    std::shared_ptr<Shared> m_shared;
    unsigned m_filter;
};

}  // namespace applist::headless
