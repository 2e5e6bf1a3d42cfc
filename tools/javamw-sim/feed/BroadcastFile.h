// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>

#include "broadcast/Broadcast.h"
#include "broadcast/Text.h"
#include "common/Result.h"

namespace applist::sim {

/// Reads a broadcast file: a transport stream, consecutive sections (recognised by the suffix
/// ".sec" or by the first bytes) or the XML encoding. Without a coding it is detected. A failure
/// names the file and the reason.
Result<Broadcast> ReadBroadcastFile(const std::string& file,
                                    std::optional<TextCoding> coding = std::nullopt);

/// Returns a line that counts the skipped parts, or an empty string if nothing was skipped.
std::string DamageRemark(const std::string& file, const Damage& damage);

}  // namespace applist::sim
