// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>

#include "broadcast/ByteReader.h"

namespace applist::sim {

/// Decodes the text of a broadcast table (EN 300 468, Annex A) to UTF-8.
///
/// The first byte may select the character table; the default is ISO 6937. A line break becomes a
/// blank. Emphasis and other control codes are dropped, and an invalid character becomes U+FFFD.
/// Returns nothing if the table is reserved or privately compressed.
std::optional<std::string> DecodeDvbText(ByteSpan text);

/// The coding of texts in a broadcast. The texts themselves do not contain it.
enum class TextCoding {
    Dvb,    ///< EN 300 468, Annex A; Japanese names as in ISDB.
    Isdb,   ///< Arib for Japanese, Latin for other languages.
    Arib,   ///< The 8-bit codes of ARIB STD-B24, volume 1.
    Latin,  ///< ISO 8859-15, as ISDB uses it outside of Japan (ABNT NBR 15608-3).
};

/// Decodes the text of a broadcast table to UTF-8; returns nothing if its coding is unknown.
/// language is as sent, or empty if the table does not contain it.
std::optional<std::string> DecodeText(ByteSpan text, const std::string& language,
                                      TextCoding coding);

}  // namespace applist::sim
