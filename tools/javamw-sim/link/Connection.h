// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "common/Result.h"
#include "link/GioHandles.h"
#include "link/Protocol.h"

namespace applist::sim {

/// Returns the payload of calls, replies and signals, "(ay)", as a floating reference.
GVariant* ToVariant(const Bytes& bytes);

bool HoldsBytes(GVariant* parameters);

/// REQUIRES: HoldsBytes(parameters).
Bytes FromVariant(GVariant* parameters);

using ConnectionPtr = GObjectPtr<GDBusConnection>;

/// Connects to the message bus at address, or to the system bus when address is empty. The
/// connection is not shared, and its loss does not end the process. Blocks.
Result<ConnectionPtr> OpenBus(const std::string& address);

/// The outcome of AnnounceName().
struct AnnounceResult {
    enum class Code {
        Announced,
        Taken,   ///< Another connection owns the name at this moment; a later try will succeed.
        Denied,  ///< The policy of the bus does not allow this connection to own the name.
        Failed,
    };
    Code code = Code::Announced;
    std::string error;  ///< Empty if announced.
};

/// Owns name for an instant, so that listeners learn the unique name of this connection from the
/// release. Blocks for two calls to the bus daemon.
AnnounceResult AnnounceName(GDBusConnection* connection, const std::string& name);

}  // namespace applist::sim
