// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "e2e/faults/ReferenceList.h"

#include <algorithm>

namespace applist::test {

using sim::Function;
using sim::Item;
using sim::Items;

void ReferenceList::Apply(Function function, const Items& items) {
    switch (function) {
        case Function::SetSelection:
            return SetSelection(items.at(0).id);
        case Function::RemoveAllItems:
            return RemoveAllItems();
        case Function::AddItems:
            return AddItems(items);
        case Function::AddItemAtEnd:
            return AddItemAtEnd(items.at(0));
        case Function::RemoveItem:
            return RemoveItem(items.at(0).id);
        case Function::ModifyItem:
            return ModifyItem(items.at(0), items.at(1));
        case Function::GetSelection:
        case Function::GetAllItems:
        case Function::SetClicked:
            return;
    }
}

Items::iterator ReferenceList::Find(const std::string& id) {
    return std::find_if(m_items.begin(), m_items.end(),
                        [&id](const Item& item) { return item.id == id; });
}

void ReferenceList::SetSelection(const std::string& id) {
    if (id.empty()) {
        m_selection = {};
    } else if (const auto listed = Find(id); m_selection.id != id && listed != m_items.end()) {
        m_selection = *listed;
    }
}

void ReferenceList::RemoveAllItems() {
    m_items.clear();
    m_kept.clear();
    m_selection = {};
}

bool ReferenceList::Append(const Item& item) {
    ++m_kept[item.id];
    if (Find(item.id) != m_items.end()) {
        return false;
    }
    m_items.push_back(item);
    return true;
}

void ReferenceList::AddItems(const Items& items) {
    for (const Item& item : items) {
        Append(item);
    }
    if (m_selection.id.empty() && !m_items.empty()) {
        m_selection = m_items.front();
    }
}

// The new item becomes the selection even if its id was already listed.
void ReferenceList::AddItemAtEnd(const Item& item) {
    Append(item);
    if (m_selection.id.empty()) {
        m_selection = item;
    }
}

bool ReferenceList::TakeKept(const std::string& id) {
    const auto kept = m_kept.find(id);
    if (kept == m_kept.end()) {
        return false;
    }
    if (--kept->second == 0) {
        m_kept.erase(kept);
    }
    return true;
}

void ReferenceList::RemoveItem(const std::string& id) {
    const auto listed = Find(id);
    if (!TakeKept(id) || listed == m_items.end()) {
        return;
    }
    if (m_selection.id == id) {
        if (m_items.size() < 2) {
            m_selection = {};
        } else {
            m_selection = listed + 1 != m_items.end() ? *(listed + 1) : *(listed - 1);
        }
    }
    m_items.erase(listed);
}

// If the new id is already taken, the old item is removed.
void ReferenceList::ModifyItem(const Item& oldItem, const Item& newItem) {
    if (m_kept.count(newItem.id) != 0) {
        return RemoveItem(oldItem.id);
    }
    const auto listed = Find(oldItem.id);
    if (!TakeKept(oldItem.id)) {
        return;
    }
    ++m_kept[newItem.id];
    if (listed == m_items.end()) {
        return;
    }
    if (m_selection.id == oldItem.id) {
        m_selection = newItem;
    }
    *listed = newItem;
}

}  // namespace applist::test
