// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>

#include "broadcast/ByteReader.h"

namespace applist::sim {

/// Text of a broadcast table (EN 300 468, Annex A) as UTF-8.
///
/// The first byte may choose the character table; without one it is ISO 6937. A line break becomes
/// a blank, emphasis and other control codes are dropped, and what is no character of the table
/// becomes U+FFFD. Nothing when the table is reserved or privately compressed.
std::optional<std::string> DecodeDvbText(ByteSpan text);

/// Text in ISO 8859-15 as UTF-8, with control codes treated alike.
std::optional<std::string> DecodeLatinText(ByteSpan text);

}  // namespace applist::sim
