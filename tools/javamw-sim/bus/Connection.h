// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "Result.h"
#include "bus/GioHandles.h"

namespace applist::sim {

using ConnectionPtr = GObjectPtr<GDBusConnection>;

/// Connects to the message bus at address, or to the system bus when address is empty. The
/// connection is not shared, and its loss does not end the process. Blocks.
Result<ConnectionPtr> OpenBus(const std::string& address);

/// Owns name for an instant: listeners learn this connection's unique name from the release.
/// Blocks for two calls to the bus daemon. Returns false iff another connection holds the name at
/// this moment; then nothing was announced and a later try will do.
Result<bool> AnnounceName(GDBusConnection* connection, const std::string& name);

}  // namespace applist::sim
