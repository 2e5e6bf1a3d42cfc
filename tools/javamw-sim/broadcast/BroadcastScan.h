// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>

#include "broadcast/Broadcast.h"
#include "broadcast/ByteReader.h"
#include "broadcast/Text.h"

namespace applist::sim {

/// Reads a whole transport stream with packets of any size (PacketReader.h): the Program
/// Association Table, the Program Map Tables that it names, and the Application Information Tables
/// that those name. Damaged parts are skipped and counted.
///
/// Without a coding, texts are decoded as DVB text, unless the stream describes its data services
/// as ISDB does.
Broadcast ScanBroadcast(ByteSpan stream, std::optional<TextCoding> coding = std::nullopt);

}  // namespace applist::sim
