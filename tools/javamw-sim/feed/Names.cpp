// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "feed/Names.h"

#include <algorithm>
#include <glib.h>

#include "feed/LanguageCodes.h"

namespace applist::sim {
namespace {

std::string CodeOf(const std::string& locale) {
    return CleanLanguage(locale.substr(0, locale.find_first_of("_-.@")));
}

}  // namespace

std::vector<std::string> ParseLanguages(const std::string& list) {
    std::vector<std::string> languages;
    for (size_t start = 0; start <= list.size();) {
        const size_t end = std::min(list.find(',', start), list.size());
        std::string code = CodeOf(list.substr(start, end - start));
        if (!code.empty()) {
            languages.push_back(std::move(code));
        }
        start = end + 1;
    }
    return languages;
}

// GLib gives each locale in several spellings, and "C" as the last.
std::vector<std::string> LocaleLanguages() {
    std::vector<std::string> languages;
    for (const char* const* name = g_get_language_names(); *name != nullptr; ++name) {
        const std::string code = CodeOf(*name);
        if (code.size() > 1 && code != "posix" &&
            std::find(languages.begin(), languages.end(), code) == languages.end()) {
            languages.push_back(code);
        }
    }
    return languages;
}

std::string CleanLanguage(const std::string& sent) {
    std::string code;
    for (const char letter : sent) {
        if (g_ascii_isalpha(letter)) {
            code += g_ascii_tolower(letter);
        }
    }
    return code;
}

std::string PreferredName(const std::vector<ApplicationName>& names,
                          const std::vector<std::string>& languages) {
    for (const std::string& language : languages) {
        const auto codes = LanguageCodes(language);
        for (const ApplicationName& name : names) {
            const std::string code = CleanLanguage(name.language);
            if (!name.text.empty() && std::find(codes.begin(), codes.end(), code) != codes.end()) {
                return name.text;
            }
        }
    }
    const auto readable = std::find_if(
        names.begin(), names.end(), [](const ApplicationName& name) { return !name.text.empty(); });
    return readable != names.end() ? readable->text : std::string();
}

std::string ValidUtf8(const std::string& text) {
    char* valid = g_utf8_make_valid(text.data(), static_cast<gssize>(text.size()));
    std::string copy = valid;
    g_free(valid);
    return copy;
}

}  // namespace applist::sim
