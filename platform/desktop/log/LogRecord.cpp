// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "log/LogRecord.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <iterator>

#include "platform_log.h"

namespace applist::desktop {
namespace {

constexpr std::string_view DIGITS = "0123456789";

bool IsNumber(std::string_view text) {
    return !text.empty() && text.find_first_not_of(DIGITS) == std::string_view::npos;
}

const char* LevelName(int priority) {
    if (priority >= PLATFORM_LOG_ERROR) {
        return "error";
    }
    return priority >= PLATFORM_LOG_INFO ? "info" : "debug";
}

// Priorities of syslog(3): error, info and debug.
const char* SyslogPriority(int priority) {
    if (priority >= PLATFORM_LOG_ERROR) {
        return "3";
    }
    return priority >= PLATFORM_LOG_INFO ? "6" : "7";
}

// Returns the length of the control character at the start of text, or 0 if there is none.
size_t ControlLength(std::string_view text) {
    // The cast avoids negative values for UTF-8 bytes where char is signed.
    const auto byte = static_cast<unsigned char>(text[0]);
    if (byte < 0x20 || byte == 0x7F) {
        return 1;
    }
    // U+0080 to U+009F in UTF-8. Terminals treat U+009B like the escape sequence "\x1b[".
    const auto next = static_cast<unsigned char>(text.size() > 1 ? text[1] : 0);
    return byte == 0xC2 && next >= 0x80 && next <= 0x9F ? 2 : 0;
}

void AppendHex(std::string& line, std::string_view bytes) {
    static constexpr char HEX[] = "0123456789abcdef";
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        line += "\\x";
        line += HEX[byte >> 4U];
        line += HEX[byte & 0xFU];
    }
}

}  // namespace

std::string FormatMessage(const char* format, va_list arguments) {
    std::array<char, 512> buffer{};
    // A va_list can be used once only, and a long message is formatted twice.
    va_list again;
    va_copy(again, arguments);
    // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized): the caller has started it
    const int length = std::vsnprintf(buffer.data(), buffer.size(), format, arguments);
    std::string text;
    if (length >= static_cast<int>(buffer.size())) {
        text.resize(static_cast<size_t>(length));
        static_cast<void>(std::vsnprintf(text.data(), text.size() + 1, format, again));
    } else if (length > 0) {
        text.assign(buffer.data(), static_cast<size_t>(length));
    }
    va_end(again);
    return text;
}

std::optional<int> ParseLogLevel(std::string_view value) {
    if (value == "error") {
        return PLATFORM_LOG_ERROR;
    }
    if (value == "info") {
        return PLATFORM_LOG_INFO;
    }
    if (value == "debug") {
        return PLATFORM_LOG_DEBUG;
    }
    return std::nullopt;
}

std::optional<CodeLocation> ParseLocation(std::string_view message) {
    // A function name may contain a bracket ("operator()"), so the line number starts after the
    // last bracket before the arrow.
    const size_t arrow = message.find(") > [");
    const size_t colon = message.find(": ");
    if (arrow == std::string_view::npos || colon >= arrow) {
        return std::nullopt;
    }
    const size_t bracket = message.substr(0, arrow).rfind('(');
    if (bracket == std::string_view::npos || bracket < colon + 2) {
        return std::nullopt;
    }
    const std::string_view function = message.substr(colon + 2, bracket - colon - 2);
    const std::string_view line = message.substr(bracket + 1, arrow - bracket - 1);
    // The LOG macros repeat the function and line, which tells a position from other text.
    std::string repeated(function);
    repeated.append(":").append(line).append("] ");
    if (!IsNumber(line) || !message.substr(arrow + 5).starts_with(repeated)) {
        return std::nullopt;
    }
    return CodeLocation{std::string(message.substr(0, colon)), std::string(function),
                        std::string(line)};
}

std::string_view WithoutLineEnds(std::string_view message) {
    const size_t last = message.find_last_not_of("\r\n");
    return message.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

std::string StandardErrorLine(const LogRecord& record) {
    std::string line = record.tag + ' ' + LevelName(record.priority) + ": ";
    for (std::string_view rest = WithoutLineEnds(record.message); !rest.empty();) {
        const size_t control = ControlLength(rest);
        AppendHex(line, rest.substr(0, control));
        line += control == 0 ? rest.substr(0, 1) : "";
        rest.remove_prefix(std::max<size_t>(control, 1));
    }
    return line + '\n';
}

std::vector<std::pair<std::string, std::string>> JournalFields(const LogRecord& record) {
    std::vector<std::pair<std::string, std::string>> fields{
        {"MESSAGE", std::string(WithoutLineEnds(record.message))},
        {"PRIORITY", SyslogPriority(record.priority)},
        {"SYSLOG_IDENTIFIER", record.tag}};
    if (record.location) {
        fields.emplace_back("CODE_FILE", record.location->file);
        fields.emplace_back("CODE_LINE", record.location->line);
        fields.emplace_back("CODE_FUNC", record.location->function);
    }
    return fields;
}

// Compares the whole text, so that GLib's other warnings keep their priority.
bool IsUnknownWatchComplaint(std::string_view domain, std::string_view message) {
    constexpr std::string_view before = "Invalid id ";
    constexpr std::string_view after = " passed to g_bus_unwatch_name()";
    return domain == "GLib-GIO" && message.size() > before.size() + after.size() &&
           message.starts_with(before) && message.ends_with(after) &&
           IsNumber(message.substr(before.size(), message.size() - before.size() - after.size()));
}

bool IsHarmlessToolkitComplaint(std::string_view function, std::string_view message) {
    constexpr std::pair<std::string_view, std::string_view> known[] = {
        {"_efl_ui_focus_manager_calc_efl_ui_focus_manager_manager_focus_set",
         "Could not fetch a node located at "},
        // A layout gives the focus back to a row before it is registered. The key that caused the
        // layout sets the focus afterwards.
        {"node_get", "Focusable "},
        {"_efl_access_object_index_in_parent_get", "Object Elm.Genlist not present in its AT-SPI "},
        {"_efl_access_object_event_emit", "Invalid parameters, event: state,changed, "},
    };
    // Compares only the start of the message, because the rest varies.
    return std::any_of(std::begin(known), std::end(known), [&](const auto& complaint) {
        return function == complaint.first && message.starts_with(complaint.second);
    });
}

}  // namespace applist::desktop
