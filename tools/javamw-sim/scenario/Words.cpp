// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "scenario/Words.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <glib.h>
#include <limits>
#include <utility>

#include "Number.h"
#include "link/Protocol.h"

namespace applist::sim {
namespace {

bool IsBlank(char character) {
    return character == ' ' || character == '\t';
}

bool IsControl(char character) {
    return static_cast<unsigned char>(character) < 0x20 || character == 0x7F;
}

/// Reads one line from left to right and stops at the first error.
class Splitter {
public:
    explicit Splitter(std::string_view line) : m_line(line) {}

    SplitLine Split() {
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
    void Fail(size_t column, std::string message) {
        m_result.error = {0, column, std::move(message)};
    }
    bool Failed() const { return m_result.error.has_value(); }

    Word ReadWord() {
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

    void ReadPlain(Word& word) {
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

    void ReadQuoted(Word& word) {
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

    void ReadEscape(Word& word) {
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

    void ReadByte(Word& word, size_t column) {
        const auto byte = FromHex(m_line.substr(m_position, 2));
        if (!byte || byte->empty()) {
            Fail(column, "\\x needs two hexadecimal digits");
            return;
        }
        word.text += byte->front();
        Advance();
        Advance();
    }

    void ReadCharacter(Word& word, size_t column) {
        const size_t close = m_line.find('}', m_position);
        const bool braced = !AtEnd() && Current() == '{' && close != std::string_view::npos;
        const size_t digits = braced ? close - m_position - 1 : 0;
        const auto codePoint =
            braced && digits <= 6 ? ParseNumber<uint32_t>(m_line.substr(m_position + 1, digits), 16)
                                  : std::nullopt;
        if (!codePoint || g_unichar_validate(*codePoint) == FALSE) {
            Fail(column, "\\u needs a Unicode code point, such as \\u{1f4fa}");
            return;
        }
        std::array<char, 6> bytes{};
        const int size = g_unichar_to_utf8(*codePoint, bytes.data());
        word.text.append(bytes.data(), static_cast<size_t>(size));
        for (size_t i = 0; i < digits + 2; ++i) {
            Advance();
        }
    }

    std::string_view m_line;
    size_t m_position = 0;
    size_t m_column = 1;
    SplitLine m_result;
};

}  // namespace

SplitLine SplitWords(std::string_view line) {
    return Splitter(line).Split();
}

namespace {

constexpr uint32_t LONGEST_MS = 24U * 60 * 60 * 1000;
// Maximum size of an array on the bus.
constexpr uint32_t LARGEST_FRAME = 64U * 1024 * 1024;

struct Unit {
    const char* name;
    uint32_t factor;
};

/// Returns the number at the beginning of text and the text after it, or nothing.
std::optional<std::pair<uint32_t, std::string>> NumberAndRest(const std::string& text) {
    uint32_t number = 0;
    const char* end = text.data() + text.size();
    const auto [last, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc()) {
        return std::nullopt;
    }
    return std::pair(number, std::string(last, end));
}

/// Returns number times unit, up to largest.
std::optional<uint32_t> Measure(const std::string& text, std::initializer_list<Unit> units,
                                uint32_t largest) {
    const auto parts = NumberAndRest(text);
    for (const Unit& unit : units) {
        if (parts && parts->second == unit.name && parts->first <= largest / unit.factor) {
            return parts->first * unit.factor;
        }
    }
    return std::nullopt;
}

// Words are quoted in messages, which must stay on one line.
std::string WithoutControls(std::string text) {
    std::ranges::replace_if(
        text, [](char character) { return static_cast<unsigned char>(character) < 0x20; }, '?');
    return text;
}

}  // namespace

bool Cursor::IsNext(const std::string& keyword) const {
    return !AtEnd() && m_line.words[m_next].plain && m_line.words[m_next].text == keyword;
}

bool Cursor::Skip(const std::string& keyword) {
    const bool found = IsNext(keyword);
    m_next += found ? 1 : 0;
    return found;
}

const Word& Cursor::Take(const std::string& what) {
    static const Word NONE;
    if (AtEnd()) {
        FailAt(m_line.endColumn, what + " is missing");
        return NONE;
    }
    return m_line.words[m_next++];
}

std::string Cursor::Text(const std::string& what) {
    return Take(what).text;
}

size_t Cursor::Choice(const std::vector<std::string_view>& keywords) {
    std::string all;
    for (size_t i = 0; i < keywords.size(); ++i) {
        const std::string keyword(keywords[i]);
        if (Skip(keyword)) {
            return i;
        }
        all += (i == 0 ? "" : i + 1 == keywords.size() ? " or " : ", ") + keyword;
    }
    const std::string found = Text(all);
    Refuse("'" + found + "' is not one of " + all);
    return 0;
}

uint32_t Cursor::Number(const std::string& what, uint32_t first, uint32_t last) {
    const std::string text = Text(what);
    const auto number = Measure(text, {{"", 1}}, last);
    if (!number || *number < first) {
        Refuse(what + " must be a number from " + std::to_string(first) + " to " +
               std::to_string(last) + ", not '" + text + "'");
        return first;
    }
    return *number;
}

Duration Cursor::Time() {
    const std::string text = Text("a time");
    const auto milliseconds =
        Measure(text, {{"ms", 1}, {"s", 1000}, {"min", 60 * 1000}}, LONGEST_MS);
    if (!milliseconds) {
        Refuse("a time must have the form 200ms, 5s or 1min, up to a day, not '" + text + "'");
    }
    return Duration(milliseconds.value_or(0));
}

size_t Cursor::Size() {
    const std::string text = Text("a size");
    const auto size = Measure(text, {{"", 1}, {"k", 1024}, {"M", 1024 * 1024}}, LARGEST_FRAME);
    if (!size) {
        Refuse("a size must have the form 512, 64k or 16M, up to 64M, not '" + text + "'");
    }
    return size.value_or(0);
}

std::optional<Duration> Cursor::Within() {
    return Skip("within") ? std::optional(Time()) : std::nullopt;
}

Function Cursor::TakeFunction() {
    const std::string name = Text("a function");
    const auto function = FunctionByName(name);
    if (!function) {
        Refuse("unknown function '" + name + "'");
    }
    return function.value_or(Function::GetAllItems);
}

ItemPattern Cursor::Pattern() {
    const Word& word = Take("an id");
    if (!word.equals) {
        return {word.text, std::nullopt};
    }
    return {word.text.substr(0, *word.equals), word.text.substr(*word.equals + 1)};
}

Item Cursor::Pair() {
    const Word& word = Take("ID=NAME");
    if (!word.equals) {
        Refuse("'" + word.text + "' lacks an unquoted '=' between id and name");
        return {};
    }
    return {word.text.substr(0, *word.equals), word.text.substr(*word.equals + 1)};
}

Bytes Cursor::Hex() {
    Bytes bytes;
    while (!AtEnd()) {
        const std::string digits = Text("bytes");
        const auto read = FromHex(digits);
        if (!read) {
            Refuse("bytes must be pairs of hexadecimal digits, not '" + digits + "'");
            return {};
        }
        bytes.insert(bytes.end(), read->begin(), read->end());
    }
    return bytes;
}

void Cursor::End() {
    if (!AtEnd()) {
        const std::string surplus = Text("");
        Refuse("unexpected word '" + surplus + "'");
    }
}

void Cursor::Refuse(const std::string& message) {
    FailAt(m_next > 0 ? m_line.words[m_next - 1].column : 1, message);
}

void Cursor::FailAt(size_t column, const std::string& message) {
    if (!m_error) {
        m_error = ScenarioError{0, column, WithoutControls(message)};
    }
}

Action ReadByKeyword(Cursor& cursor, const Rules& rules, const std::string& what) {
    for (const Rule& rule : rules) {
        if (cursor.Skip(rule.form.keyword)) {
            return rule.read(cursor);
        }
    }
    const std::string word = cursor.Text(what);
    cursor.Refuse("'" + word + "' is not " + what);
    return {};
}

}  // namespace applist::sim
