// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "scenario/Words.h"

#include <cstdint>
#include <utility>

namespace applist::sim {
namespace {

constexpr uint32_t LAST_CODE_POINT = 0x10FFFF;

bool IsBlank(char character) {
    return character == ' ' || character == '\t';
}

bool IsControl(char character) {
    return static_cast<unsigned char>(character) < 0x20 || character == 0x7F;
}

int HexValue(char digit) {
    if (digit >= '0' && digit <= '9') {
        return digit - '0';
    }
    const char lower = static_cast<char>(digit | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

bool IsCharacter(uint32_t codePoint) {
    return codePoint <= LAST_CODE_POINT && (codePoint < 0xD800 || codePoint > 0xDFFF);
}

void AppendUtf8(std::string& text, uint32_t codePoint) {
    const auto tail = [&](unsigned shift) {
        text += static_cast<char>(0x80U | (codePoint >> shift & 0x3FU));
    };
    if (codePoint < 0x80) {
        text += static_cast<char>(codePoint);
    } else if (codePoint < 0x800) {
        text += static_cast<char>(0xC0U | codePoint >> 6U);
        tail(0);
    } else if (codePoint < 0x10000) {
        text += static_cast<char>(0xE0U | codePoint >> 12U);
        tail(6);
        tail(0);
    } else {
        text += static_cast<char>(0xF0U | codePoint >> 18U);
        tail(12);
        tail(6);
        tail(0);
    }
}

/// Reads one line from left to right and stops at the first error.
class Splitter {
public:
    explicit Splitter(std::string_view line) : m_line(line) {}

    SplitLine Split();

private:
    bool AtEnd() const { return m_position == m_line.size(); }
    char Current() const { return m_line[m_position]; }
    /// Columns count characters, so continuation bytes of UTF-8 are not counted.
    void Advance() {
        ++m_position;
        if (AtEnd() || (static_cast<unsigned char>(Current()) & 0xC0U) != 0x80) {
            ++m_column;
        }
    }
    void Fail(size_t column, std::string message) { m_result.error = {column, std::move(message)}; }
    bool Failed() const { return m_result.error.has_value(); }

    Word ReadWord();
    void ReadPlain(Word& word);
    void ReadQuoted(Word& word);
    void ReadEscape(Word& word);
    void ReadByte(Word& word, size_t column);
    void ReadCharacter(Word& word, size_t column);

    std::string_view m_line;
    size_t m_position = 0;
    size_t m_column = 1;
    SplitLine m_result;
};

SplitLine Splitter::Split() {
    while (!AtEnd() && !Failed()) {
        if (IsBlank(Current())) {
            Advance();
        } else if (Current() == '#') {
            break;
        } else {
            m_result.words.push_back(ReadWord());
            m_result.endColumn = m_column;
            m_result.endByte = m_position;
        }
    }
    return std::move(m_result);
}

Word Splitter::ReadWord() {
    Word word;
    word.column = m_column;
    while (!AtEnd() && !Failed() && !IsBlank(Current())) {
        if (Current() == '"') {
            ReadQuoted(word);
        } else {
            ReadPlain(word);
        }
    }
    return word;
}

void Splitter::ReadPlain(Word& word) {
    if (IsControl(Current())) {
        Fail(m_column, "control byte; write it as \\xHH in quotes");
        return;
    }
    if (Current() == '\\') {
        Fail(m_column, "a backslash is allowed only in quotes");
        return;
    }
    if (Current() == '=' && !word.equals) {
        word.equals = word.text.size();
    }
    word.text += Current();
    Advance();
}

void Splitter::ReadQuoted(Word& word) {
    const size_t opened = m_column;
    word.plain = false;
    Advance();
    while (!Failed()) {
        if (AtEnd()) {
            Fail(opened, "this quote is not closed");
        } else if (Current() == '"') {
            Advance();
            return;
        } else if (Current() == '\\') {
            ReadEscape(word);
        } else if (IsControl(Current())) {
            Fail(m_column, "control byte; write it as \\xHH");
        } else {
            word.text += Current();
            Advance();
        }
    }
}

void Splitter::ReadEscape(Word& word) {
    constexpr std::string_view LETTERS = "\"\\nt";
    constexpr std::string_view MEANINGS = "\"\\\n\t";
    const size_t column = m_column;
    Advance();
    const char letter = AtEnd() ? '\0' : Current();
    const size_t simple = LETTERS.find(letter);
    if (simple == std::string_view::npos && letter != 'x' && letter != 'u') {
        Fail(column, "unknown escape; valid are \\\" \\\\ \\n \\t \\xHH \\u{H...}");
        return;
    }
    Advance();
    if (letter == 'x') {
        ReadByte(word, column);
    } else if (letter == 'u') {
        ReadCharacter(word, column);
    } else {
        word.text += MEANINGS[simple];
    }
}

void Splitter::ReadByte(Word& word, size_t column) {
    int value = 0;
    for (int digits = 0; digits < 2; ++digits) {
        const int digit = AtEnd() ? -1 : HexValue(Current());
        if (digit < 0) {
            Fail(column, "\\x needs two hexadecimal digits");
            return;
        }
        value = value * 16 + digit;
        Advance();
    }
    word.text += static_cast<char>(value);
}

void Splitter::ReadCharacter(Word& word, size_t column) {
    const size_t close = m_line.find('}', m_position);
    const bool braced = !AtEnd() && Current() == '{' && close != std::string_view::npos;
    const size_t digits = braced ? close - m_position - 1 : 0;
    bool valid = digits >= 1 && digits <= 6;
    uint32_t codePoint = 0;
    for (size_t i = 1; valid && i <= digits; ++i) {
        const int digit = HexValue(m_line[m_position + i]);
        valid = digit >= 0;
        codePoint = codePoint * 16 + static_cast<uint32_t>(digit);
    }
    if (!valid || !IsCharacter(codePoint)) {
        Fail(column, "\\u needs a Unicode code point, such as \\u{1f4fa}");
        return;
    }
    AppendUtf8(word.text, codePoint);
    for (size_t i = 0; i < digits + 2; ++i) {
        Advance();
    }
}

}  // namespace

SplitLine SplitWords(std::string_view line) {
    return Splitter(line).Split();
}

}  // namespace applist::sim
