// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

#include "common/Result.h"
#include "recording/RecordedMessage.h"

/// Captures of a whole bus, as "busctl capture" writes them: pcapng or pcap with the link type of
/// D-Bus (231).
namespace applist::sim {

/// True iff bytes begin as such a file does, whatever its link type.
bool IsCapture(std::string_view bytes);

/// The traffic of applications and middlewares; a message's line is the number of its packet.
/// Packets that hold no whole message are skipped and counted in the remark, and so is a damaged
/// end.
Result<Recording> ReadCapture(std::string_view bytes);

}  // namespace applist::sim
