// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "broadcast/ApplicationTable.h"

namespace applist::sim {

/// All codes of ISO 639 for the language that one of them stands for: "it" or "ita" gives both,
/// "fre" gives "fr", "fra" and "fre". An unknown code stands for itself.
std::vector<std::string> LanguageCodes(std::string_view language);

/// The languages of a list such as "ita,en", the preferred one first. Codes of two or three
/// letters; case and what follows "_", "-" or "." do not count, so that locales are fine.
std::vector<std::string> ParseLanguages(const std::string& list);

/// The languages of the person at the terminal, from the environment (LANGUAGE, LC_ALL,
/// LC_MESSAGES, LANG).
std::vector<std::string> LocaleLanguages();

/// The code of a language as broadcasts should send it: the letters of sent in lower case. Three
/// bytes such as "fr\0" are in use.
std::string CleanLanguage(const std::string& sent);

/// The name in the first of languages that there is one in, otherwise the first that is not empty.
/// Empty when there is none.
std::string PreferredName(const std::vector<ApplicationName>& names,
                          const std::vector<std::string>& languages);

/// text with what is no UTF-8 replaced by U+FFFD.
std::string ValidUtf8(const std::string& text);

}  // namespace applist::sim
