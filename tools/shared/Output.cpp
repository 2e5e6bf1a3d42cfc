// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "shared/Output.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <glib.h>
#include <unistd.h>

#include <nlohmann/json.hpp>

namespace applist::tools {
namespace {

size_t WidthOf(gunichar character) {
    if (g_unichar_iszerowidth(character) != FALSE) {
        return 0;
    }
    return g_unichar_iswide(character) != FALSE ? 2 : 1;
}

std::string Dump(const Json& value, int indentation) {
    // Replaces invalid UTF-8, because dump() throws on it by default.
    return value.dump(indentation, ' ', false, Json::error_handler_t::replace);
}

}  // namespace

std::string OneLine(const std::string& text) {
    std::string line;
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte == '\\') {
            line += "\\\\";
        } else if (byte < 0x20 || byte == 0x7F) {
            g_autofree char* code = g_strdup_printf("\\x%02x", byte);
            line += code;
        } else {
            line += character;
        }
    }
    return line;
}

std::string Replaced(std::string text, std::string_view from, std::string_view to) {
    for (size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
        text.replace(at, from.size(), to);
    }
    return text;
}

size_t ColumnsOf(std::string_view text) {
    size_t columns = 0;
    const char* end = text.data() + text.size();
    for (const char* at = text.data(); at < end;) {
        const gunichar character = g_utf8_get_char_validated(at, end - at);
        // GLib returns -1 or -2 as an unsigned number for an invalid or truncated character.
        // Such a byte counts as one column.
        const bool valid = static_cast<gint32>(character) >= 0;
        columns += valid ? WidthOf(character) : 1;
        at += valid ? g_unichar_to_utf8(character, nullptr) : 1;
    }
    return columns;
}

bool OutputTakesColours() {
    // By the NO_COLOR convention, an empty variable counts as unset.
    const char* refused = std::getenv("NO_COLOR");
    const char* terminal = std::getenv("TERM");
    return isatty(STDOUT_FILENO) != 0 && (refused == nullptr || *refused == '\0') &&
           (terminal == nullptr || std::string(terminal) != "dumb");
}

std::string Painted(const std::string& text, const char* colour) {
    return colour + text + "\033[0m";
}

bool Write(const std::string& text) {
    // Flushed here, so that a full disk or a closed pipe shows in the result.
    const bool written =
        std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0;
    // A reader that has read enough closes its pipe, which needs no message.
    if (!written && errno != EPIPE) {
        static_cast<void>(std::fprintf(stderr, "%s: standard output: %s\n",
                                       program_invocation_short_name, g_strerror(errno)));
    }
    return written;
}

bool WriteLine(const std::string& line) {
    return Write(line + '\n');
}

std::string JsonLine(const Json& value) {
    return Dump(value, -1);
}

std::string JsonText(const Json& value) {
    return Dump(value, 2) + '\n';
}

}  // namespace applist::tools
