// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>

namespace applist::desktop {

// The toolkit lays out a whole text on the stack, so a row text of some megabytes overflows it.
// ShownText.cpp therefore replaces the toolkit's edje_object_part_text_escaped_set(), which sets
// row texts, by a version that passes on ShownText(). It also sets the part "applist.wrapped" of a
// theme that has one. Linking that file is sufficient.

/// The maximum number of characters of a text that are drawn or spoken. A focused name slides to
/// its end within 20 seconds, in which a viewer reads about 300 letters.
constexpr std::size_t SHOWN_CHARACTERS = 1000;
/// The maximum number of bytes: up to four per character in UTF-8. Also limits malformed text.
constexpr std::size_t SHOWN_BYTES = 4 * SHOWN_CHARACTERS;

/// Returns the beginning of text, within both limits and without cutting a character. Tabs and
/// line ends become spaces. text may be malformed UTF-8. Any thread.
std::string ShownText(const char* text);
/// Returns the same as valid UTF-8, which screen readers and speech services need.
std::string SpokenText(const char* text);

}  // namespace applist::desktop
