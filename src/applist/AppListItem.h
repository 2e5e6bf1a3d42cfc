// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

/// An entry of the list: a data-service application that the broadcast offers.
///
/// Items are passed and kept by pointer; whoever creates one keeps it alive for as long as a model
/// refers to it. Main thread only.
class AppListItem {
public:
    AppListItem() = default;

    /// The text that the viewer reads, in UTF-8. It plays no part in matching.
    virtual std::string GetVisibleName() = 0;

    /// The item's identity: two items with byte-equal ids are the same entry. An empty id stands
    /// for no item at all.
    virtual std::string GetUnigueId() = 0;

    virtual ~AppListItem() = default;

protected:
    // For the implementations, which are values; a copy through the base would cut them.
    AppListItem(const AppListItem&) = default;
    AppListItem& operator=(const AppListItem&) = default;
    AppListItem(AppListItem&&) = default;
    AppListItem& operator=(AppListItem&&) = default;
};

/// The predicate by which items are matched: an element is the one looked for when its unique id
/// equals the target's, byte for byte. Meant for a search from the front, where the first wins.
class ApplistItemComparator {
public:
    /// target is not owned and must outlive the search.
    explicit ApplistItemComparator(AppListItem* target) : m_target(target) {}

    /// Fetches both ids anew each time, since an item may change them between two calls.
    bool operator()(AppListItem* element) const {
        return element->GetUnigueId() == m_target->GetUnigueId();
    }

private:
    AppListItem* m_target;
};
