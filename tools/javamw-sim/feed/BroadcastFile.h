// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>

#include "broadcast/Broadcast.h"
#include "broadcast/Text.h"
#include "common/Result.h"

namespace applist::sim {

/// Reads what a file says about applications: a transport stream, sections back to back (by the
/// name's end ".sec", or by what the file begins with) or the XML encoding. coding is found out
/// when none is given. A failure names the file and says why it is none of these.
Result<Broadcast> ReadBroadcastFile(const std::string& file,
                                    std::optional<TextCoding> coding = std::nullopt);

/// "auto", "dvb", "isdb", "arib" or "latin" as a choice of coding; a failure lists them.
Result<std::optional<TextCoding>> ParseTextCoding(const std::string& name);

/// A line for the person at the terminal that counts what was skipped; empty for nothing.
std::string DamageRemark(const std::string& file, const Damage& damage);

}  // namespace applist::sim
