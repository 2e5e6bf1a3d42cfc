/* Copyright (c) 2026 the applist authors
 * SPDX-License-Identifier: Apache-2.0 */
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

/* The platform's log. Any thread. */

enum { PLATFORM_LOG_MAIN = 0 };

enum { PLATFORM_LOG_DEBUG = 3, PLATFORM_LOG_INFO = 4, PLATFORM_LOG_ERROR = 6 };

/* Writes one message. log_id is PLATFORM_LOG_MAIN; tag names the program; format and the following
 * arguments are those of printf(). If the priority is switched off, the message is not formatted.
 * Returns 0 or more on success and a negative number if the message could not be written; callers
 * may ignore the result. */
int __dlog_print(int log_id, int priority, const char* tag, const char* format, ...)
    __attribute__((format(printf, 4, 5)));

#ifdef __cplusplus
}
#endif
