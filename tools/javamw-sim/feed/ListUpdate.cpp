// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "feed/ListUpdate.h"

#include <algorithm>

namespace applist::sim {
namespace {

constexpr const char* ON_THE_WAY = "~";

const Item* Find(const Items& items, const std::string& id) {
    const auto found = std::ranges::find(items, id, &Item::id);
    return found != items.end() ? &*found : nullptr;
}

std::string FreeId(const Items& shown, const Items& wanted, const std::string& id) {
    // The id in between must not collide with an id that is shown or about to be shown.
    std::string free = id + ON_THE_WAY;
    while (Find(shown, free) != nullptr || Find(wanted, free) != nullptr) {
        free += ON_THE_WAY;
    }
    return free;
}

void Keep(ListUpdate& update, const Item& item, const Item& wanted, const std::string& freeId) {
    if (item.name != wanted.name) {
        // The application removes an item if ModifyItem names an id on the list, even its own.
        const Item between{freeId, wanted.name};
        update.calls.push_back({Function::ModifyItem, {item, between}});
        update.calls.push_back({Function::ModifyItem, {between, wanted}});
        ++update.renamed;
    }
    update.items.push_back(wanted);
}

}  // namespace

ListUpdate UpdateList(const Items& shown, const Items& wanted) {
    ListUpdate update;
    for (const Item& item : shown) {
        if (Find(wanted, item.id) == nullptr) {
            update.calls.push_back({Function::RemoveItem, {item}});
            ++update.removed;
        }
    }
    // A second loop, so that all removals precede the first rename.
    for (const Item& item : shown) {
        if (const Item* kept = Find(wanted, item.id)) {
            Keep(update, item, *kept, FreeId(shown, wanted, item.id));
        }
    }
    // Additions come last, because the application appends new items.
    Items added;
    std::ranges::copy_if(wanted, std::back_inserter(added),
                         [&](const Item& item) { return Find(shown, item.id) == nullptr; });
    if (!added.empty()) {
        // Counted before the items are moved into the call.
        update.added = added.size();
        update.items.insert(update.items.end(), added.begin(), added.end());
        update.calls.push_back({Function::AddItems, std::move(added)});
    }
    return update;
}

}  // namespace applist::sim
