// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "broadcast/ApplicationTable.h"

namespace applist::sim {

/// Returns all codes of ISO 639 for a language: "it" or "ita" returns both, "fre" returns "fr",
/// "fra" and "fre". An unknown code returns itself.
std::vector<std::string> LanguageCodes(std::string_view language);

/// Parses a list of languages such as "ita,en", the preferred one first. Codes have two or three
/// letters. Case and the part after "_", "-" or "." are ignored, so locales are accepted.
std::vector<std::string> ParseLanguages(const std::string& list);

/// Returns the languages of the user from the environment (LANGUAGE, LC_ALL, LC_MESSAGES, LANG).
std::vector<std::string> LocaleLanguages();

/// Returns a language code as a broadcast should send it: the letters of sent in lower case.
/// Malformed codes such as "fr\0" are in use.
std::string CleanLanguage(const std::string& sent);

/// Returns the name in the first of languages that has one, otherwise the first name that is not
/// empty. Empty if there is none.
std::string PreferredName(const std::vector<ApplicationName>& names,
                          const std::vector<std::string>& languages);

/// Returns text with invalid UTF-8 replaced by U+FFFD.
std::string ValidUtf8(const std::string& text);

}  // namespace applist::sim
