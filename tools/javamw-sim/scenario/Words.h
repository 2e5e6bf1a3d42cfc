// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace applist::sim {

/// Where a line went wrong and why.
struct WordError {
    size_t column = 0;  ///< In characters, from 1.
    std::string message;
};

/// One word of a line, with its quotes and escapes resolved.
struct Word {
    std::string text;   ///< Any bytes.
    size_t column = 0;  ///< Of its first character, from 1.
    bool plain = true;  ///< Written without quotes: may be a keyword.
    /// Where in text the first "=" outside quotes stands; it parts an id from a name.
    std::optional<size_t> equals;
};

/// The words of a line, or what is wrong with it.
struct SplitLine {
    std::vector<Word> words;
    size_t endColumn = 1;  ///< Where a word that is missing would stand.
    size_t endByte = 0;    ///< Behind the last word; blanks or a comment follow.
    std::optional<WordError> error;
};

/// Parts line at blanks. A word, or any part of it, may stand in double quotes; in these, \" \\ \n
/// \t \xHH (one byte) and \u{H...} (one character, as UTF-8) are escapes. "#" at the beginning of a
/// word begins a comment. Takes any bytes.
SplitLine SplitWords(std::string_view line);

}  // namespace applist::sim
