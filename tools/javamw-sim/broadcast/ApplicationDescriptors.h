// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "broadcast/ApplicationTable.h"

namespace applist::sim {

/// Fills application from its own descriptors and those common to all of its table. The tags are
/// the same in DVB and in ISDB, which adds some (boundaries, caches, latencies: 0x30 to 0x33) that
/// say nothing of what is read here.
void ReadApplicationDescriptors(ByteSpan common, ByteSpan own, TextCoding coding,
                                Application& application);

}  // namespace applist::sim
