// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "broadcast/Broadcast.h"
#include "broadcast/ByteReader.h"
#include "broadcast/Text.h"

namespace applist::sim {

/// True iff bytes begin with a whole section whose CRC is correct.
bool BeginsWithSection(ByteSpan bytes);

/// Reads consecutive sections, as section filters write them to files. All Application Information
/// Tables belong to one service without a number. Damaged parts are skipped and counted.
Broadcast ScanSections(ByteSpan file, TextCoding coding = TextCoding::Dvb);

}  // namespace applist::sim
