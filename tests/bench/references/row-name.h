// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <stdio.h>

/// Writes the name of a row, for C and C++. Two neighbours never start with the same letters, so
/// that scrolling by one row changes the whole picture. name has room for 32 bytes.
static inline void write_row_name(char* name, int row) {
    snprintf(name, 32, "%c%c%c application %d", 'A' + row * 7 % 26, 'a' + row * 11 % 26,
             'a' + row * 17 % 26, row);
}
