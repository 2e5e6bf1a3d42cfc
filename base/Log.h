// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform_log.h"

/// Log lines of the program. Every line starts with where it was written, twice, as the set's log
/// tools expect: "file: function(line) > [function:line] ". Any thread.

namespace applist {

/// The part of a path behind its last slash, found while compiling.
constexpr const char* BaseName(const char* path) {
    const char* base = path;
    for (const char* c = path; *c != '\0'; ++c) {
        if (*c == '/') {
            base = c + 1;
        }
    }
    return base;
}

/// A place in the source. As a default argument, Here() is the place of the call.
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

// Macros, because the line and the function are the caller's. The platform checks the priority
// before it formats anything.
#define APPLIST_LOG(priority, format, ...)                                                      \
    static_cast<void>(                                                                          \
        __dlog_print(PLATFORM_LOG_MAIN, (priority), "applist", "%s: %s(%d) > [%s:%d] " format,  \
                     applist::BaseName(__FILE__), static_cast<const char*>(__func__), __LINE__, \
                     static_cast<const char*>(__func__), __LINE__ __VA_OPT__(, ) __VA_ARGS__))

#define LOG_DEBUG(...) APPLIST_LOG(PLATFORM_LOG_DEBUG, __VA_ARGS__)
#define LOG_INFO(...) APPLIST_LOG(PLATFORM_LOG_INFO, __VA_ARGS__)
#define LOG_ERROR(...) APPLIST_LOG(PLATFORM_LOG_ERROR, __VA_ARGS__)
/// The same for a helper, as a line of the function that called it.
#define LOG_ERROR_AT(place, format, ...)                                                   \
    static_cast<void>(__dlog_print(                                                        \
        PLATFORM_LOG_MAIN, PLATFORM_LOG_ERROR, "applist", "%s: %s(%d) > [%s:%d] " format,  \
        applist::BaseName((place).file), (place).function, (place).line, (place).function, \
        (place).line __VA_OPT__(, ) __VA_ARGS__))
