// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <ostream>
#include <string>
#include <vector>

/// A platform log that stores its lines for assertions. Linking it provides __dlog_print().
namespace applist::test {

/// One parsed line.
struct LogLine {
    int priority = 0;
    /// The text after the position prefix, line ends included.
    std::string message;
    /// Read from the position prefix.
    std::string file;
    std::string function;

    /// Compares priority, message and function. An empty function matches any.
    bool operator==(const LogLine& other) const {
        return priority == other.priority && message == other.message &&
               (function == other.function || function.empty() || other.function.empty());
    }
};
std::ostream& operator<<(std::ostream& out, const LogLine& line);

/// Builders for expected lines. If a function is given, only a line written by that function
/// matches.
LogLine Debug(std::string message, std::string function = "");
LogLine Info(std::string message, std::string function = "");
LogLine Error(std::string message, std::string function = "");
LogLine Event(std::string event);

/// All lines since the last ClearLog(), oldest first. A line with a wrong tag, log id or prefix
/// fails the running test where it is written.
const std::vector<LogLine>& Log();
/// Only the messages, of any priority.
std::vector<std::string> LogMessages();
/// The name of the function that wrote each line. Events are omitted.
std::vector<std::string> LogFunctions();
/// All lines as one text: "function: message" for a debug line, "ERROR function: message" or "INFO
/// function: message" for others, and events as they are.
std::string LogText();
/// Joins lines as LogText() does, so that a failed comparison of the two prints a line-by-line
/// diff.
std::string Lines(const std::vector<std::string>& lines);
void ClearLog();
/// Appends a test's own event to the recorded lines, so that a test can check the order of both.
/// Fakes note their calls here for the same reason.
void Note(std::string event);

}  // namespace applist::test
