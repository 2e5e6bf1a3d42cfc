// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace applist::sim {

/// Position and text of an error in a line.
struct WordError {
    size_t column = 0;  ///< In characters, from 1.
    std::string message;
};

/// One word of a line, with its quotes and escapes resolved.
struct Word {
    std::string text;   ///< Any bytes.
    size_t column = 0;  ///< Column of its first character, from 1.
    bool plain = true;  ///< Written without quotes, so it may be a keyword.
    /// Position in text of the first "=" outside quotes, which separates an id from a name.
    std::optional<size_t> equals;
};

/// The words of a line, or the error in it.
struct SplitLine {
    std::vector<Word> words;
    size_t endColumn = 1;  ///< Column at which a missing word would begin.
    size_t endByte = 0;    ///< End of the last word; blanks or a comment follow.
    std::optional<WordError> error;
};

/// Splits line at blanks. A word, or a part of it, may be in double quotes. In quotes, \" \\ \n \t
/// \xHH (one byte) and \u{H...} (one character, as UTF-8) are escapes. "#" at the beginning of a
/// word begins a comment. Accepts any bytes.
SplitLine SplitWords(std::string_view line);

}  // namespace applist::sim
