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

/// How a broadcast codes its texts. Nothing in the texts themselves tells.
enum class TextCoding {
    Dvb,    ///< EN 300 468, Annex A. Names in Japanese are coded as ISDB does all the same.
    Isdb,   ///< By language: Japanese as Arib, others as Latin.
    Arib,   ///< The 8-bit codes of ARIB STD-B24, volume 1.
    Latin,  ///< ISO 8859-15, as ISDB uses it outside of Japan (ABNT NBR 15608-3).
};

/// Text of a broadcast table as UTF-8; nothing when its coding is unknown. language is as sent;
/// empty where the table names none.
std::optional<std::string> DecodeText(ByteSpan text, const std::string& language,
                                      TextCoding coding);

/// The 8-bit codes of ARIB STD-B24 as UTF-8. What is no character is left out.
std::optional<std::string> DecodeAribText(ByteSpan text);

}  // namespace applist::sim
