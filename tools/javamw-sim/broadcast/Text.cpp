// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "broadcast/Text.h"

#include "broadcast/DvbText.h"

namespace applist::sim {
namespace {

constexpr const char* JAPANESE = "jpn";

// Bytes that choose a character table in DVB; ARIB has no use for them at the start of a text.
bool ChoosesDvbTable(ByteSpan text) {
    const uint8_t first = text.empty() ? 0 : text[0];
    return (first >= 0x01 && first <= 0x0B) || (first >= 0x10 && first <= 0x15) || first == 0x1F;
}

TextCoding Resolve(ByteSpan text, const std::string& language, TextCoding coding) {
    switch (coding) {
        case TextCoding::Isdb:
            return language == JAPANESE ? TextCoding::Arib : TextCoding::Latin;
        case TextCoding::Dvb:
            return language == JAPANESE && !ChoosesDvbTable(text) ? TextCoding::Arib
                                                                  : TextCoding::Dvb;
        case TextCoding::Arib:
        case TextCoding::Latin:
            break;
    }
    return coding;
}

}  // namespace

std::optional<std::string> DecodeText(ByteSpan text, const std::string& language,
                                      TextCoding coding) {
    switch (Resolve(text, language, coding)) {
        case TextCoding::Arib:
            return DecodeAribText(text);
        case TextCoding::Latin:
            return DecodeLatinText(text);
        case TextCoding::Dvb:
        case TextCoding::Isdb:
            break;
    }
    return DecodeDvbText(text);
}

}  // namespace applist::sim
