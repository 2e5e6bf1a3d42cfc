// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "link/Protocol.h"

namespace applist::sim {

/// Counts of an update of a list.
struct UpdateCounts {
    size_t added = 0;
    size_t removed = 0;
    size_t renamed = 0;
};

/// The calls that turn one list into another, and the resulting list.
struct ListUpdate : UpdateCounts {
    std::vector<FunctionCall> calls;
    Items items;  ///< The wanted items; items that stay keep their places.
};

/// Turns shown into wanted without clearing the list, so that the viewer keeps the position:
/// RemoveItem for each removed item, ModifyItem for each renamed item, and one AddItems for the new
/// items, which are appended.
///
/// The application removes an item when ModifyItem names an id that is already in the list, even
/// the own id of the item. An item is therefore renamed in two calls, with an unused id in between.
ListUpdate UpdateList(const Items& shown, const Items& wanted);

}  // namespace applist::sim
