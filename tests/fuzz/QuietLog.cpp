// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdarg>
#include <cstdio>

#include "fakes/FakePlatformLog.h"
#include "platform_log.h"

// A log that formats every line, so that the arguments are read, and discards it, because a fuzzer
// writes millions.

extern "C" int __dlog_print(int /*log_id*/, int /*priority*/, const char* /*tag*/,
                            const char* format, ...) {
    char line[256];
    va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(line, sizeof line, format, arguments);
    va_end(arguments);
    return length;
}

namespace applist::test {

// The signature must match the fake's.
void Note(std::string /*event*/) {}  // NOLINT(performance-unnecessary-value-param)

}  // namespace applist::test
