// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "data/Reading.h"

/// Storage of the factory items that GetDataDirect() reads. Only factory tools write them. Any
/// thread, any number of processes; each call reads the file again.
namespace applist::desktop {

/// Reads one item. A damaged file, or an item that is not a 32-bit number, is reported as a
/// problem.
Reading<int32_t> ReadFactoryItem(int id);

/// Stores an item and replaces its previous value. Fails if the file cannot be read or replaced.
Failure WriteFactoryItem(int id, int32_t value);

/// Removes an item; succeeds without a change if the item does not exist. Fails like
/// WriteFactoryItem().
Failure RemoveFactoryItem(int id);

}  // namespace applist::desktop
