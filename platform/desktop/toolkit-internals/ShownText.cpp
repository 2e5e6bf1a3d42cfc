// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "toolkit-internals/ShownText.h"

#include <Edje.h>
#include <algorithm>
#include <cstring>
#include <dlfcn.h>
#include <glib.h>
#include <string_view>

#include "CallbackGuard.h"

namespace applist::desktop {
namespace {

constexpr std::size_t LONGEST_CHARACTER = 4;

bool ContinuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

// The toolkit would draw these as replacement characters.
bool IsTabOrLineEnd(char letter) {
    return std::string_view("\t\n\v\f\r").find(letter) != std::string_view::npos;
}

// A TEXTBLOCK of the theme that shows the row's text on several lines; see still.edc.
constexpr const char* WRAPPED_PART = "applist.wrapped";

// Makes a TEXTBLOCK show the text literally, on as few lines as it needs.
std::string Escaped(const std::string& text) {
    std::string markup;
    for (const char letter : text) {
        switch (letter) {
            case '&':
                markup += "&amp;";
                break;
            case '<':
                markup += "&lt;";
                break;
            case '>':
                markup += "&gt;";
                break;
            default:
                markup += letter;
        }
    }
    return markup;
}

}  // namespace

std::string ShownText(const char* text) {
    const std::size_t size = strnlen(text, SHOWN_BYTES);
    std::size_t characters = 0;
    std::size_t end = 0;
    while (end < size && (ContinuesCharacter(text[end]) || ++characters <= SHOWN_CHARACTERS)) {
        ++end;
    }
    // Malformed text may contain any number of continuation bytes, so the search is limited.
    std::size_t start = end;
    while (ContinuesCharacter(text[start]) && start > 0 && end - start < LONGEST_CHARACTER) {
        --start;
    }
    std::string shown(text, ContinuesCharacter(text[start]) ? end : start);
    std::replace_if(shown.begin(), shown.end(), IsTabOrLineEnd, ' ');
    return shown;
}

std::string SpokenText(const char* text) {
    g_autofree char* valid = g_utf8_make_valid(ShownText(text).c_str(), -1);
    return valid;
}

}  // namespace applist::desktop

// Replaces the library's function, because the dynamic linker resolves symbols from the program
// first.
extern "C" Eina_Bool edje_object_part_text_escaped_set(Evas_Object* obj, const char* part,
                                                       const char* text) {
    static auto* const replaced = reinterpret_cast<decltype(&edje_object_part_text_escaped_set)>(
        dlsym(RTLD_NEXT, "edje_object_part_text_escaped_set"));
    if (text == nullptr) {
        return replaced(obj, part, text);
    }
    return applist::GuardCallback<Eina_Bool>(EINA_FALSE, [&] {
        const std::string shown = applist::desktop::ShownText(text);
        if (edje_object_part_exists(obj, applist::desktop::WRAPPED_PART) != EINA_FALSE) {
            replaced(obj, applist::desktop::WRAPPED_PART, applist::desktop::Escaped(shown).c_str());
        }
        return replaced(obj, part, shown.c_str());
    });
}
