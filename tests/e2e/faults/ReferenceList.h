// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <string>

#include "link/Protocol.h"

namespace applist::test {

/// The expected list after the middleware's calls: a second implementation of each call, on values
/// instead of objects.
class ReferenceList {
public:
    /// Applies a call of this function with these items.
    void Apply(sim::Function function, const sim::Items& items);

    const sim::Items& items() const { return m_items; }
    /// Name and id are empty if nothing is selected.
    const sim::Item& selection() const { return m_selection; }

private:
    sim::Items::iterator Find(const std::string& id);
    void SetSelection(const std::string& id);
    void RemoveAllItems();
    void AddItems(const sim::Items& items);
    void AddItemAtEnd(const sim::Item& item);
    void RemoveItem(const std::string& id);
    void ModifyItem(const sim::Item& oldItem, const sim::Item& newItem);
    bool Append(const sim::Item& item);
    /// Removes one item of that id from the application's items; true iff there was one.
    bool TakeKept(const std::string& id);

    sim::Items m_items;
    sim::Item m_selection;
    /// The number of items that the application owns for each id. A duplicate is not listed, but is
    /// owned until a later call names its id.
    std::map<std::string, int> m_kept;
};

}  // namespace applist::test
