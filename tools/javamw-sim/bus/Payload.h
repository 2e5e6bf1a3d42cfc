// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "bus/GioHandles.h"
#include "protocol/Protocol.h"

namespace applist::sim {

/// What calls, replies and signals carry, "(ay)"; a floating reference.
GVariant* ToVariant(const Bytes& bytes);

bool HoldsBytes(GVariant* parameters);

/// REQUIRES: HoldsBytes(parameters).
Bytes FromVariant(GVariant* parameters);

}  // namespace applist::sim
