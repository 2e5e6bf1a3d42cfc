// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/ScreenRows.h"

#include <glib.h>

namespace applist::sim {
namespace {

size_t WidthOf(gunichar character) {
    if (g_unichar_iszerowidth(character) != FALSE) {
        return 0;
    }
    return g_unichar_iswide(character) != FALSE ? 2 : 1;
}

}  // namespace

size_t ColumnsOf(std::string_view text) {
    size_t columns = 0;
    const char* end = text.data() + text.size();
    for (const char* at = text.data(); at < end;) {
        const gunichar character = g_utf8_get_char_validated(at, end - at);
        const bool valid = static_cast<gint32>(character) >= 0;
        columns += valid ? WidthOf(character) : 1;
        at += valid ? g_unichar_to_utf8(character, nullptr) : 1;
    }
    return columns;
}

size_t RowsAbove(std::string_view text, size_t columns) {
    return ColumnsOf(text) / columns;
}

}  // namespace applist::sim
