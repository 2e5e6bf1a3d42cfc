// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <string>

/// An entry of the list: a data-service application of the broadcast.
///
/// Items are passed and stored by pointer. The creator owns an item and must keep it alive while a
/// model refers to it. Main thread only.
class AppListItem {
public:
    AppListItem() = default;

    /// Returns the text that the viewer sees, in UTF-8. It is not used to match items.
    virtual std::string GetVisibleName() = 0;

    /// Returns the item's identity: two items with byte-equal ids are the same entry. An empty id
    /// means "no item". Other programs use this interface, so the misspelling stays.
    virtual std::string GetUnigueId() = 0;

    virtual ~AppListItem() = default;

protected:
    // Protected: copying through the base class would slice the item.
    AppListItem(const AppListItem&) = default;
    AppListItem& operator=(const AppListItem&) = default;
    AppListItem(AppListItem&&) = default;
    AppListItem& operator=(AppListItem&&) = default;
};

/// Predicate for std::find_if() and similar searches: true if an item's unique id equals the
/// target's byte for byte.
class ApplistItemComparator {
public:
    /// target is not owned and must outlive the search.
    explicit ApplistItemComparator(AppListItem* target) : m_target(target) {}

    /// Reads both ids on each call, because items may change them.
    bool operator()(AppListItem* element) const {
        const std::string id = element->GetUnigueId();
        const std::string target = m_target->GetUnigueId();
        // From the end: ids of one broadcaster begin alike, and a list of 1,000 items compares them
        // 500,000 times.
        return id.size() == target.size() && std::equal(id.rbegin(), id.rend(), target.rbegin());
    }

private:
    AppListItem* m_target;
};
