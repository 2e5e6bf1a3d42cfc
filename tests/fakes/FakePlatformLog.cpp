// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "fakes/FakePlatformLog.h"

#include <cstdarg>
#include <cstdio>
#include <mutex>
#include <regex>

#include <gtest/gtest.h>

#include "platform_log.h"

namespace applist::test {
namespace {

std::vector<LogLine>& TheLines() {
    static std::vector<LogLine> lines;
    return lines;
}

std::string Format(const char* format, va_list arguments) {
    va_list measured;
    va_copy(measured, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, measured);
    va_end(measured);
    std::string text(static_cast<size_t>(length) + 1, '\0');
    static_cast<void>(std::vsnprintf(text.data(), text.size(), format, arguments));
    text.pop_back();
    return text;
}

LogLine Parse(int priority, const std::string& text) {
    static const std::regex prefix(R"(^([^/:]+): ([^(]+)\((\d+)\) > \[([^:]+):(\d+)\] )");
    std::smatch match;
    if (!std::regex_search(text, match, prefix)) {
        ADD_FAILURE() << "log line without its prefix: " << text;
        return {priority, text, "", ""};
    }
    EXPECT_EQ(match[2], match[4]) << text;
    EXPECT_EQ(match[3], match[5]) << text;
    return {priority, match.suffix(), match[1], match[2]};
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const LogLine& line) {
    out << line.priority << " " << testing::PrintToString(line.message);
    return line.function.empty() ? out : out << " by " << line.function;
}

LogLine Debug(std::string message, std::string function) {
    return {PLATFORM_LOG_DEBUG, std::move(message), "", std::move(function)};
}
LogLine Info(std::string message, std::string function) {
    return {PLATFORM_LOG_INFO, std::move(message), "", std::move(function)};
}
LogLine Error(std::string message, std::string function) {
    return {PLATFORM_LOG_ERROR, std::move(message), "", std::move(function)};
}
LogLine Event(std::string event) {
    return {0, std::move(event), "", ""};
}

const std::vector<LogLine>& Log() {
    return TheLines();
}

std::vector<std::string> LogMessages() {
    std::vector<std::string> messages;
    for (const LogLine& line : TheLines()) {
        messages.push_back(line.message);
    }
    return messages;
}

std::vector<std::string> LogFunctions() {
    std::vector<std::string> functions;
    for (const LogLine& line : TheLines()) {
        if (!line.function.empty()) {
            functions.push_back(line.function);
        }
    }
    return functions;
}

std::string LogText() {
    std::vector<std::string> lines;
    for (const LogLine& line : TheLines()) {
        const char* level = line.priority == PLATFORM_LOG_ERROR  ? "ERROR "
                            : line.priority == PLATFORM_LOG_INFO ? "INFO "
                                                                 : "";
        lines.push_back(level + line.function + (line.function.empty() ? "" : ": ") + line.message);
    }
    return Lines(lines);
}

std::string Lines(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) {
        text += line + "\n";
    }
    return text;
}

void ClearLog() {
    TheLines().clear();
}

void Note(std::string event) {
    TheLines().push_back(Event(std::move(event)));
}

}  // namespace applist::test

extern "C" int __dlog_print(int log_id, int priority, const char* tag, const char* format, ...) {
    using applist::test::TheLines;
    EXPECT_EQ(log_id, PLATFORM_LOG_MAIN);
    EXPECT_STREQ(tag, "applist");
    va_list arguments;
    va_start(arguments, format);
    const std::string text = applist::test::Format(format, arguments);
    va_end(arguments);
    // The platform's log may be called from any thread.
    static std::mutex mutex;
    const std::lock_guard lock(mutex);
    TheLines().push_back(applist::test::Parse(priority, text));
    return static_cast<int>(text.size());
}
