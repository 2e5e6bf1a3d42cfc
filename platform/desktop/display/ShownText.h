// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>

namespace applist::desktop {

/// The toolkit lays out a whole text on the stack, so that a row's text of some megabytes ends the
/// program. This program therefore puts a function of its own in the place of the toolkit's
/// edje_object_part_text_escaped_set(), through which rows get their texts, and passes on
/// ShownText(). Linking this file is enough.
///
/// The most characters of a text that are drawn or spoken. A focused name slides to its end within
/// 20 seconds, in which a viewer reads some 300 letters.
constexpr std::size_t SHOWN_CHARACTERS = 1000;
/// The same in bytes, of which UTF-8 takes up to four for a character. Bounds malformed text, too.
constexpr std::size_t SHOWN_BYTES = 4 * SHOWN_CHARACTERS;

/// Returns the start of text, within both limits, with no character cut in two, and with a space
/// for each tab. text may be malformed UTF-8. Any thread.
std::string ShownText(const char* text);

}  // namespace applist::desktop
