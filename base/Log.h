// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform_log.h"

/// Logging macros of the program. Every line starts with the source position, given twice because
/// the set's log tools expect it: "file: function(line) > [function:line] ". These tools search for
/// the texts, so do not correct them: some have a misspelling, and those of the transport end with
/// an empty line. Any thread.

namespace applist {

/// Returns the file name of a path, without its folders. Evaluated at compile time.
constexpr const char* BaseName(const char* path) {
    const char* base = path;
    for (const char* c = path; *c != '\0'; ++c) {
        if (*c == '/') {
            base = c + 1;
        }
    }
    return base;
}

/// A position in the source. As a default argument, Here() gives the position of the call.
struct LogPlace {
    const char* file;
    const char* function;
    int line;

    static constexpr LogPlace Here(const char* file = __builtin_FILE(),
                                   const char* function = __builtin_FUNCTION(),
                                   int line = __builtin_LINE()) {
        return {file, function, line};
    }
};

}  // namespace applist

// These are macros so that __LINE__ and __func__ are the caller's. The platform checks the priority
// before it formats a message.
#define APPLIST_LOG(priority, format, ...)                                                      \
    static_cast<void>(                                                                          \
        __dlog_print(PLATFORM_LOG_MAIN, (priority), "applist", "%s: %s(%d) > [%s:%d] " format,  \
                     applist::BaseName(__FILE__), static_cast<const char*>(__func__), __LINE__, \
                     static_cast<const char*>(__func__), __LINE__ __VA_OPT__(, ) __VA_ARGS__))

#define LOG_DEBUG(...) APPLIST_LOG(PLATFORM_LOG_DEBUG, __VA_ARGS__)
#define LOG_INFO(...) APPLIST_LOG(PLATFORM_LOG_INFO, __VA_ARGS__)
#define LOG_ERROR(...) APPLIST_LOG(PLATFORM_LOG_ERROR, __VA_ARGS__)
/// Like LOG_ERROR, with the position of another function: a helper logs with its caller's position.
#define LOG_ERROR_AT(place, format, ...)                                                   \
    static_cast<void>(__dlog_print(                                                        \
        PLATFORM_LOG_MAIN, PLATFORM_LOG_ERROR, "applist", "%s: %s(%d) > [%s:%d] " format,  \
        applist::BaseName((place).file), (place).function, (place).line, (place).function, \
        (place).line __VA_OPT__(, ) __VA_ARGS__))
