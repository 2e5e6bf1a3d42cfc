// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// What a log line consists of, and how it looks in each place it can go to. Pure functions.
namespace applist::desktop {

/// Where a message was written.
struct CodeLocation {
    std::string file;
    std::string function;
    std::string line;

    bool operator==(const CodeLocation&) const = default;
};

/// One message on its way out. The priority is one of PLATFORM_LOG_*.
struct LogRecord {
    int priority = 0;
    /// The program or library that speaks.
    std::string tag;
    std::string message;
    std::optional<CodeLocation> location;
};

/// The value of APPLIST_LOG as the lowest priority to be written: "error", "info" or "debug".
/// Nothing for anything else.
std::optional<int> ParseLogLevel(std::string_view value);

/// Reads the position "file: function(line) > [function:line] " that a message starts with.
/// Nothing when it starts otherwise.
std::optional<CodeLocation> ParseLocation(std::string_view message);

/// The message without the line ends at its end; they are the writer's way to set lines apart and
/// have no place in a record.
std::string_view WithoutLineEnds(std::string_view message);

/// The record as the one line that standard error shows, line end included: "tag level: message".
/// Control characters, which names from a broadcast may hold, are written as \xNN.
std::string StandardErrorLine(const LogRecord& record);

/// The record as the journal's fields, names before values.
std::vector<std::pair<std::string, std::string>> JournalFields(const LogRecord& record);

/// True iff this is GLib's complaint about a name watch that does not exist.
///
/// The transport ends its three signal subscriptions through the same call as its name watches,
/// and GLib complains once for each. That is known and harmless.
bool IsUnknownWatchComplaint(std::string_view domain, std::string_view message);

/// True iff this is one of the toolkit's complaints about itself that mean nothing to anybody: that
/// a list's row holds nothing that could take the focus instead of it, when the focus goes to a row
/// that has just been drawn; and two by which it loses its way among its own objects while a
/// screen reader asks for them.
bool IsHarmlessToolkitComplaint(std::string_view function, std::string_view message);

}  // namespace applist::desktop
