/* Copyright (c) 2026 the applist authors
 * SPDX-License-Identifier: Apache-2.0 */
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

/* Items that the factory wrote into the set. Any thread. */

enum {
    /* GetDataDirect(): the item was read and is a number. */
    FACTORY_DATA_INTEGER = 2,
    /* Bytes that the caller must provide for one item. */
    FACTORY_DATA_BUFFER_SIZE = 1008
};

/* Reads the item with the given id into buffer, which holds FACTORY_DATA_BUFFER_SIZE bytes and is
 * aligned for an int.
 *
 * Returns FACTORY_DATA_INTEGER when the item is there and is a number: the first 32-bit word of
 * buffer then holds it. Any other result means that no number could be read, and buffer is left as
 * it was. */
int GetDataDirect(int id, void* buffer);

#ifdef __cplusplus
}
#endif
