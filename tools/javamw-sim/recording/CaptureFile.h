// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

#include "common/Result.h"
#include "recording/RecordedMessage.h"

/// Captures of a whole bus as "busctl capture" writes them: pcapng or pcap with the link type of
/// D-Bus (231).
namespace applist::sim {

/// True iff bytes begin like a capture, with any link type.
bool IsCapture(std::string_view bytes);

/// Returns the traffic between applications and middlewares. The line of a message is its packet
/// number. Incomplete packets and a damaged end are skipped and counted in the remark.
Result<Recording> ReadCapture(std::string_view bytes);

}  // namespace applist::sim
