// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <string>

#include "link/Protocol.h"

namespace applist::test {

/// The list as the middleware's calls must leave it: written once more from what each call means,
/// on values instead of objects.
class ReferenceList {
public:
    /// What the application does on this call. items are those that the call takes.
    void Apply(sim::Function function, const sim::Items& items);

    const sim::Items& items() const { return m_items; }
    /// Both empty when nothing is selected.
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
    /// Whether the application had an item of that id; it has one less now.
    bool TakeKept(const std::string& id);

    sim::Items m_items;
    sim::Item m_selection;
    /// How many items of an id the application keeps: a duplicate is not listed, but kept until a
    /// call names its id once more.
    std::map<std::string, int> m_kept;
};

}  // namespace applist::test
