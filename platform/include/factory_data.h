/* Copyright (c) 2026 the applist authors
 * SPDX-License-Identifier: Apache-2.0 */
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

/* Items that the factory stores in the set. Any thread. */

enum {
    /* Result of GetDataDirect(): the item was read and is a number. */
    FACTORY_DATA_INTEGER = 2,
    /* Size of the buffer for one item, in bytes. */
    FACTORY_DATA_BUFFER_SIZE = 1008
};

/* Reads the item with the given id into buffer, which must hold FACTORY_DATA_BUFFER_SIZE bytes and
 * be aligned for an int.
 *
 * Returns FACTORY_DATA_INTEGER if the item exists and is a number; the first 32-bit word of buffer
 * then holds it. Any other result is a failure, and buffer is unchanged. */
int GetDataDirect(int id, void* buffer);

#ifdef __cplusplus
}
#endif
