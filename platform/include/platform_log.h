/* Copyright (c) 2026 the applist authors
 * SPDX-License-Identifier: Apache-2.0 */
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

/* The platform's log. Any thread. */

enum { PLATFORM_LOG_MAIN = 0 };

enum { PLATFORM_LOG_DEBUG = 3, PLATFORM_LOG_INFO = 4, PLATFORM_LOG_ERROR = 6 };

/* Writes one message. log_id is PLATFORM_LOG_MAIN; tag names the program; format and what follows
 * are printf's. The arguments are not looked at while the priority is switched off. Returns a
 * negative number when the message could not be written, else 0 or more; callers need not care. */
int __dlog_print(int log_id, int priority, const char* tag, const char* format, ...)
    __attribute__((format(printf, 4, 5)));

#ifdef __cplusplus
}
#endif
