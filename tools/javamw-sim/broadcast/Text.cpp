// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "broadcast/Text.h"

#include <algorithm>
#include <glib.h>
#include <memory>
#include <utility>

namespace applist::sim {
namespace {

// Names that iconv uses for the tables of ETSI EN 300 468, annex A, and for LATIN_9 of ISDB.
constexpr const char* UCS_2 = "UCS-2BE";
constexpr const char* UTF_8 = "UTF-8";
constexpr const char* ISO_6937 = "ISO_6937";
constexpr const char* LATIN_9 = "ISO-8859-15";
constexpr const char* REPLACEMENT = "\xEF\xBF\xBD";
constexpr const char* EURO_SIGN = "\xE2\x82\xAC";
constexpr uint8_t EURO_IN_ISO_6937 = 0xA4;
constexpr uint8_t FIRST_CHARACTER = 0x20;
// Control codes, in one byte and as the private characters of the two-byte tables.
constexpr char32_t LINE_BREAK = 0x8A;
constexpr char32_t TWO_BYTE_CONTROLS = 0xE000;

/// The name of a character table for iconv, and the text after the bytes that select the table.
struct Table {
    std::string name;
    ByteSpan text;
};

std::string Iso8859(unsigned part) {
    // ISO/IEC 8859 does not have a part 12.
    const bool exists = part >= 1 && part <= 15 && part != 12;
    return exists ? "ISO-8859-" + std::to_string(part) : std::string();
}

// An empty name means that the table cannot be decoded.
std::string TableName(uint8_t selector, ByteReader& rest) {
    switch (selector) {
        case 0x10:
            return Iso8859(rest.U16());
        case 0x11:
        case 0x14:  // its characters are a subset of the same two-byte code
            return UCS_2;
        case 0x12:
            return "EUC-KR";
        case 0x13:
            return "EUC-CN";
        case 0x15:
            return UTF_8;
        default:
            // Selectors 0x01 to 0x0B stand for the parts 5 to 15.
            return selector >= 0x01 && selector <= 0x0B ? Iso8859(selector + 4U) : std::string();
    }
}

Table ChooseTable(ByteSpan text) {
    // ETSI EN 300 468: a text without a selector byte uses the default table.
    if (text.empty() || text[0] >= FIRST_CHARACTER) {
        return {ISO_6937, text};
    }
    ByteReader reader(text);
    const uint8_t selector = reader.U8();
    std::string name = TableName(selector, reader);
    return {reader.failed() ? std::string() : std::move(name), reader.Take(reader.left())};
}

bool IsControl(char32_t code) {
    return code < FIRST_CHARACTER || (code >= 0x7F && code <= 0x9F);
}

// Appends a blank for a line break and nothing for other control codes.
void AppendControl(std::string& output, char32_t code) {
    if (code == LINE_BREAK) {
        output += ' ';
    }
}

// Removes one-byte control codes first, because not every table of iconv accepts them.
std::string WithoutControlBytes(ByteSpan text) {
    std::string clean;
    for (const uint8_t byte : text) {
        if (IsControl(byte)) {
            AppendControl(clean, byte);
        } else {
            clean += static_cast<char>(byte);
        }
    }
    return clean;
}

// REQUIRES: utf8 is valid.
std::string WithoutControlCharacters(const std::string& utf8) {
    std::string clean;
    const char* const end = utf8.data() + utf8.size();
    for (const char* at = utf8.data(); at < end;) {
        const char* const next = g_utf8_next_char(at);
        const char32_t code = g_utf8_get_char(at);
        const char32_t oneByte = code >= TWO_BYTE_CONTROLS ? code - TWO_BYTE_CONTROLS : code;
        if (IsControl(oneByte) && (code == oneByte || oneByte >= 0x80)) {
            AppendControl(clean, oneByte);
        } else {
            clean.append(at, next);
        }
        at = next;
    }
    return clean;
}

// Takes the valid beginning of text and returns it as UTF-8, or nothing if the table is unknown.
std::optional<std::string> TakeValid(const std::string& table, ByteSpan& text) {
    const auto* bytes = reinterpret_cast<const char*>(text.data());
    size_t read = 0;
    size_t written = 0;
    const auto convert = [&](size_t size) {
        return g_convert(bytes, static_cast<gssize>(size), UTF_8, table.c_str(), &read, &written,
                         nullptr);
    };
    g_autofree char* utf8 = convert(text.size());
    // The library converts nothing if a character is invalid, and sets read to its position.
    if (utf8 == nullptr) {
        utf8 = convert(read);
    }
    text = text.subspan(read);
    return utf8 == nullptr ? std::nullopt : std::optional(std::string(utf8, written));
}

std::optional<std::string> Convert(const std::string& table, ByteSpan text) {
    std::string utf8;
    while (!text.empty()) {
        const auto valid = TakeValid(table, text);
        if (!valid) {
            return std::nullopt;
        }
        utf8 += *valid;
        if (!text.empty()) {
            // ETSI EN 300 468 adds the euro sign to ISO/IEC 6937, and iconv does not know it.
            const bool euro = table == ISO_6937 && text[0] == EURO_IN_ISO_6937;
            utf8 += euro ? EURO_SIGN : REPLACEMENT;
            // Skips a whole character, so that two-byte text stays aligned.
            const size_t unit = table == UCS_2 ? 2 : 1;
            text = text.subspan(std::min(unit, text.size()));
        }
    }
    return utf8;
}

std::optional<std::string> Decode(const Table& table) {
    if (table.name.empty()) {
        return std::nullopt;
    }
    // In these two tables a byte in the range of control codes may be part of a character, so
    // control codes are removed after the conversion.
    if (table.name == UCS_2 || table.name == UTF_8) {
        const auto utf8 = Convert(table.name, table.text);
        return utf8 ? std::optional(WithoutControlCharacters(*utf8)) : std::nullopt;
    }
    const std::string clean = WithoutControlBytes(table.text);
    return Convert(table.name, {reinterpret_cast<const uint8_t*>(clean.data()), clean.size()});
}

}  // namespace

std::optional<std::string> DecodeDvbText(ByteSpan text) {
    return Decode(ChooseTable(text));
}

}  // namespace applist::sim

extern "C" {
#include <aribb24/aribb24.h>
// The headers of the library must be included in this order.
#include <aribb24/decoder.h>
}

namespace applist::sim {
namespace {

// One byte of a macro expands to several characters.
constexpr size_t MAX_GROWTH = 16;
// The library writes a terminating zero even if the text fills the buffer.
constexpr size_t ROOM_FOR_ZERO = 1;

struct DestroyInstance {
    void operator()(arib_instance_t* instance) const { arib_instance_destroy(instance); }
};
using Instance = std::unique_ptr<arib_instance_t, DestroyInstance>;

// Decodes the 8-bit codes of ARIB STD-B24. Invalid characters are dropped.
std::optional<std::string> DecodeAribText(ByteSpan text) {
    const Instance instance(arib_instance_new(nullptr));
    if (!instance) {
        return std::nullopt;
    }
    arib_register_messages_callback(instance.get(), [](void*, const char*) {});
    arib_decoder_t* decoder = arib_get_decoder(instance.get());
    if (decoder == nullptr) {
        return std::nullopt;
    }
    std::string utf8(text.size() * MAX_GROWTH + ROOM_FOR_ZERO, '\0');
    arib_initialize_decoder(decoder);
    const size_t size = arib_decode_buffer(decoder, text.data(), text.size(), utf8.data(),
                                           utf8.size() - ROOM_FOR_ZERO);
    arib_finalize_decoder(decoder);
    // The size that the library reports is not trusted beyond the buffer.
    utf8.resize(std::min(size, utf8.size()));
    std::erase_if(utf8, [](char byte) { return static_cast<unsigned char>(byte) < 0x20; });
    return utf8;
}

constexpr const char* JAPANESE = "jpn";

// These bytes select a character table in DVB. ARIB does not use them at the start of a text.
bool ChoosesDvbTable(ByteSpan text) {
    const uint8_t first = text.empty() ? 0 : text[0];
    return (first >= 0x01 && first <= 0x0B) || (first >= 0x10 && first <= 0x15) || first == 0x1F;
}

}  // namespace

std::optional<std::string> DecodeText(ByteSpan text, const std::string& language,
                                      TextCoding coding) {
    const bool japanese = language == JAPANESE;
    if (coding == TextCoding::Arib || (coding == TextCoding::Isdb && japanese) ||
        (coding == TextCoding::Dvb && japanese && !ChoosesDvbTable(text))) {
        return DecodeAribText(text);
    }
    return coding == TextCoding::Dvb ? DecodeDvbText(text) : Decode({LATIN_9, text});
}

}  // namespace applist::sim
