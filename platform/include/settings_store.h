/* Copyright (c) 2026 the applist authors
 * SPDX-License-Identifier: Apache-2.0 */
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

/* The set's settings: typed values with slash-separated keys. Keys under "db/" persist across
 * reboots, keys under "memory/" do not. Any thread; each call reads the store again.
 *
 * Both functions return 0 and write *value, or return a negative number and leave *value unchanged.
 * A key that has another type or cannot be read is a failure. A missing key is a failure, unless
 * the port defines a default for a setting that its sets need not store. */

/* Reads a boolean as 0 or 1. */
int vconf_get_bool(const char* key, int* value);

/* Reads a 32-bit signed number. */
int vconf_get_int(const char* key, int* value);

#ifdef __cplusplus
}
#endif
