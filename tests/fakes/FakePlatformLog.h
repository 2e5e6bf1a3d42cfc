// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <ostream>
#include <string>
#include <vector>

/// A platform log that keeps what is written, for tests to assert on. Linking it provides
/// __dlog_print().
namespace applist::test {

/// One written line, taken apart.
struct LogLine {
    int priority = 0;
    /// What follows the position prefix, line ends included.
    std::string message;
    /// From the prefix.
    std::string file;
    std::string function;

    /// Compares priority, message and function. An empty function matches any.
    bool operator==(const LogLine& other) const {
        return priority == other.priority && message == other.message &&
               (function == other.function || function.empty() || other.function.empty());
    }
};
std::ostream& operator<<(std::ostream& out, const LogLine& line);

/// Builders for expectations. A line that names its function matches only if that function wrote
/// it.
LogLine Debug(std::string message, std::string function = "");
LogLine Info(std::string message, std::string function = "");
LogLine Error(std::string message, std::string function = "");
LogLine Event(std::string event);

/// All lines since the last ClearLog(), oldest first. A line with a wrong tag, log id or prefix
/// fails the running test where it is written.
const std::vector<LogLine>& Log();
/// The messages alone, any priority.
std::vector<std::string> LogMessages();
/// The functions that wrote the lines, one for each line; events are left out.
std::vector<std::string> LogFunctions();
void ClearLog();
/// Puts an event of the test's own behind the lines so far, for the order between the two. Fakes
/// that take part in such an order note what is done to them.
void Note(std::string event);

}  // namespace applist::test
