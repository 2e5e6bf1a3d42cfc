// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <functional>

#include <gio/gio.h>

#include "support/ChildProcess.h"

namespace applist::test {

/// Runs GLib's default main context until condition holds, checked after each dispatch. Returns
/// true iff it does in time.
[[nodiscard]] bool RunUntil(const std::function<bool()>& condition,
                            std::chrono::milliseconds patience = PATIENCE);

/// Runs the default main context until every message that reached the connection before this call
/// has been dispatched and every message sent on it has reached the bus. False if the bus does not
/// answer.
[[nodiscard]] bool RoundTrip(GDBusConnection* connection);

}  // namespace applist::test
