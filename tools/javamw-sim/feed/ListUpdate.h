// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "link/Protocol.h"

namespace applist::sim {

/// One call of the application.
struct ListCall {
    Function function{};
    Items items;

    bool operator==(const ListCall&) const = default;
};

/// The calls that lead from one list to another, and the list after them.
struct ListUpdate {
    std::vector<ListCall> calls;
    Items items;  ///< Those that were wanted; those that stay keep their places.
    size_t added = 0;
    size_t removed = 0;
    size_t renamed = 0;
};

/// Leads from shown to wanted without clearing the list, so that the viewer's place in it holds:
/// RemoveItem for each item that is gone, ModifyItem for each of another name, one AddItems for
/// those that are new, which come last.
///
/// The application takes a ModifyItem to an id that it lists, and be it the item's own, for an
/// order to remove the item: an item is renamed in two calls, by way of an id that nobody has.
ListUpdate UpdateList(const Items& shown, const Items& wanted);

}  // namespace applist::sim
