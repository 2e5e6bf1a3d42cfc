// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdarg>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// The parts of a log line and its formats for each destination. Pure functions, any thread.
namespace applist::desktop {

/// The source position of a message.
struct CodeLocation {
    std::string file;
    std::string function;
    std::string line;

    bool operator==(const CodeLocation&) const = default;
};

/// One message to be written. priority is one of PLATFORM_LOG_*.
struct LogRecord {
    int priority = 0;
    /// The name of the program or library that logs the message.
    std::string tag;
    std::string message;
    std::optional<CodeLocation> location;
};

/// Returns the message that format and arguments make, of any length. Does not end the va_list.
std::string FormatMessage(const char* format, va_list arguments);

/// Parses the value of APPLIST_LOG ("error", "info" or "debug") into the lowest priority that is
/// written. Returns nothing for any other value.
std::optional<int> ParseLogLevel(std::string_view value);

/// Parses the position "file: function(line) > [function:line] " at the start of message. Returns
/// nothing if message does not start with a position.
std::optional<CodeLocation> ParseLocation(std::string_view message);

/// Returns message without trailing line ends. They only separate the sender's lines and are not
/// part of a record.
std::string_view WithoutLineEnds(std::string_view message);

/// Formats the record for standard error as one line, including the line end: "tag level: message".
/// Control characters are written as \xNN, because application names from the broadcast may contain
/// them.
std::string StandardErrorLine(const LogRecord& record);

/// Formats the record as journal fields: pairs of name and value.
std::vector<std::pair<std::string, std::string>> JournalFields(const LogRecord& record);

/// Returns true if this is GLib's warning about an unknown name watch.
///
/// The transport ends its three signal subscriptions with g_bus_unwatch_name(), so GLib logs one
/// warning for each. They are harmless.
bool IsUnknownWatchComplaint(std::string_view domain, std::string_view message);

/// Returns true if this is one of three toolkit messages about its own internal state that are
/// harmless. One is logged when the focus moves to a list row that has just been drawn and contains
/// no focusable object. The other two are logged while a screen reader queries the toolkit's
/// objects.
bool IsHarmlessToolkitComplaint(std::string_view function, std::string_view message);

}  // namespace applist::desktop
