// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>

#include "Result.h"
#include "data/KeyFile.h"

/// Storage of the factory items that GetDataDirect() reads. Only factory tools write them. Any
/// thread, any number of processes; each call reads the file again.
namespace applist::desktop {

/// Reads one item, or nothing if the set does not have it. Fails if the file is damaged or the item
/// is not a 32-bit number; the failure names the file.
Result<std::optional<int32_t>> ReadFactoryItem(int id);

/// Stores an item and replaces its previous value. Fails if the file cannot be read or replaced.
Failure WriteFactoryItem(int id, int32_t value);

/// Removes an item; succeeds without a change if the item does not exist. Fails like
/// WriteFactoryItem().
Failure RemoveFactoryItem(int id);

}  // namespace applist::desktop
