// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "scenario/Statement.h"

namespace applist::sim {

/// One word of a line, with its quotes and escapes resolved.
struct Word {
    std::string text;   ///< Any bytes.
    size_t column = 0;  ///< Column of its first character, from 1.
    bool plain = true;  ///< Written without quotes, so it may be a keyword.
    /// Position in text of the first "=" outside quotes, which separates an id from a name.
    std::optional<size_t> equals{};
};

/// The words of a line, or the error in it.
struct SplitLine {
    std::vector<Word> words;
    size_t endColumn = 1;                ///< Column at which a missing word would begin.
    size_t endByte = 0;                  ///< End of the last word; blanks or a comment follow.
    std::optional<ScenarioError> error;  ///< Without its line.
};

/// Splits line at blanks. A word, or a part of it, may be in double quotes. In quotes, \" \\ \n \t
/// \xHH (one byte) and \u{H...} (one character, as UTF-8) are escapes. "#" at the beginning of a
/// word begins a comment. Accepts any bytes.
SplitLine SplitWords(std::string_view line);

/// Matches an item by its id, and by its name if given.
struct ItemPattern {
    std::string id;
    std::optional<std::string> name;
};

/// Takes the words of a line one by one, each as an expected kind. Keeps the first error. After an
/// error everything taken is empty and no other error is reported, so a grammar needs no error
/// handling.
class Cursor {
public:
    /// line must outlive the cursor.
    explicit Cursor(const SplitLine& line) : m_line(line) {}

    /// Without its line.
    const std::optional<ScenarioError>& error() const { return m_error; }
    /// True if no word is left, or after an error.
    bool AtEnd() const { return m_error || m_next == m_line.words.size(); }
    /// Takes the next word iff it is this keyword.
    bool Skip(const std::string& keyword);
    /// True if the next word is this keyword. Does not take it.
    bool IsNext(const std::string& keyword) const;

    /// Takes the next word. what names it in the error if it is missing.
    std::string Text(const std::string& what);
    /// Takes one of these keywords and returns its index.
    size_t Choice(const std::vector<std::string_view>& keywords);
    /// Takes the name of one of these values.
    template <typename Named, size_t COUNT>
    Named OneOf(const std::array<Named, COUNT>& all) {
        std::vector<std::string_view> names(COUNT);
        std::ranges::transform(all, names.begin(), [](Named named) { return NameOf(named); });
        return all[Choice(names)];
    }
    uint32_t Number(const std::string& what, uint32_t first, uint32_t last);
    /// Takes "200ms", "5s" or "1min".
    Duration Time();
    /// Takes "512", "64k" or "16M", in bytes.
    size_t Size();
    /// Takes "within T" if it follows.
    std::optional<Duration> Within();
    Function TakeFunction();
    /// Takes an id with an optional name.
    ItemPattern Pattern();
    /// Takes "ID=NAME".
    Item Pair();
    /// Takes all remaining words as pairs of hexadecimal digits.
    Bytes Hex();
    /// Reports an error if a word is left.
    void End();
    /// Reports an error at the last word, unless there is one already.
    void Refuse(const std::string& message);

private:
    const Word& Take(const std::string& what);
    void FailAt(size_t column, const std::string& message);

    const SplitLine& m_line;
    size_t m_next = 0;
    std::optional<ScenarioError> m_error;
};

/// A form of line and the function that takes the words after its keyword. The result counts only
/// if the cursor has no error afterwards.
struct Rule {
    StatementForm form;
    Action (*read)(Cursor&);
};
using Rules = std::vector<Rule>;

/// Returns the action that calls a function or sends other bytes.
Action Sending(const Message& message);
/// Returns the message of a call, whose items are numbered by copy.
Message CallMessage(const FunctionCall& call);

// Each table is in the file of its statements, in the order of the manual.
const Rules& StageRules();
const Rules& MessageRules();
const Rules& ExpectationRules();  ///< Without the keyword "expect".

/// Takes a keyword that is in rules, and the words that belong to it. If the next word is not such
/// a keyword, the error message says that it is not "what".
Action ReadByKeyword(Cursor& cursor, const Rules& rules, const std::string& what);

}  // namespace applist::sim
