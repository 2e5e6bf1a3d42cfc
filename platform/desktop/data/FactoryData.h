// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "Reading.h"

/// The items behind GetDataDirect(), and what only the factory may do: change them. Any thread, any
/// number of processes; each call works on the file anew.
namespace applist::desktop {

/// Reads one item. A damaged file and an item that is no 32-bit number are problems.
Reading<int32_t> ReadFactoryItem(int id);

/// Stores an item in place of any before. Fails when the file cannot be read or replaced.
Failure WriteFactoryItem(int id, int32_t value);

/// Removes an item; nothing happens when there is none. Fails as WriteFactoryItem() does.
Failure RemoveFactoryItem(int id);

}  // namespace applist::desktop
