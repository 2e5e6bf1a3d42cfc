// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "applist/DefaultAppListModel.h"

#include <algorithm>
#include <cstdint>

#include "Log.h"
#include "applist/DefaultAppListItem.h"

namespace {

template <typename Listener>
void AddOnce(std::vector<Listener*>& listeners, Listener* listener) {
    if (std::find(listeners.begin(), listeners.end(), listener) == listeners.end()) {
        listeners.push_back(listener);
    }
}

// The low 32 bits of an address are sufficient to distinguish listeners in the log.
int AddressForLog(const void* listener) {
    return static_cast<int>(reinterpret_cast<std::intptr_t>(listener));
}

}  // namespace

DefaultAppListModel::DefaultAppListModel()
    : m_selection(nullptr), m_emptyItem(new DefaultAppListItem) {
    // GetSelection() must never return null, so an item without an id stands for "no selection".
    m_selection = m_emptyItem;
}

DefaultAppListModel::~DefaultAppListModel() {
    delete m_emptyItem;
}

void DefaultAppListModel::SetSelection(AppListItem* item) {
    if (item == nullptr || item->GetUnigueId().empty()) {
        m_selection = m_emptyItem;
        return;
    }
    if (IsSelected(item)) {
        return;
    }
    // The selection is the listed object with the same id, because the argument may be a temporary
    // of the remote call.
    const auto listed = Find(item);
    if (listed == m_items.end()) {
        return;
    }
    m_selection = *listed;
    NotifySelected();
}

AppListItem* DefaultAppListModel::GetSelection() {
    return m_selection;
}

std::vector<AppListItem*> DefaultAppListModel::GetAllItems() {
    return m_items;
}

void DefaultAppListModel::SetClicked(AppListItem* item) {
    LOG_DEBUG("Menu item clicked: [name: %s, unique id: %s]", item->GetVisibleName().c_str(),
              item->GetUnigueId().c_str());
    LOG_DEBUG("Number of clicked listeners: %d", static_cast<int>(m_clickListeners.size()));
    for (ItemClickListener* listener : m_clickListeners) {
        listener->ItemClicked(this);
    }
}

void DefaultAppListModel::RemoveAllItems() {
    if (m_items.empty()) {
        return;
    }
    // Both are changed before the listeners are called, so that none of them reads a selection that
    // is no longer listed. The items themselves belong to the caller.
    m_items.clear();
    m_selection = m_emptyItem;
    NotifyChanged();
    NotifySelected();
}

void DefaultAppListModel::AddItems(const std::vector<AppListItem*>& items) {
    LOG_DEBUG("AddItems");
    const size_t countBefore = m_items.size();
    for (AppListItem* item : items) {
        if (!IsListed(item)) {
            m_items.push_back(item);
        }
    }
    // One notification for the whole batch: each one costs a signal on the bus and a pass over all
    // rows.
    if (m_items.size() > countBefore) {
        NotifyChanged();
    }
    if (IsSelectionEmpty() && !m_items.empty()) {
        // OK must start something as soon as a row is visible.
        m_selection = m_items.front();
        LOG_DEBUG("There is not selected item. Make newly added Item selected");
        NotifySelected();
    }
}

void DefaultAppListModel::AddItemAtEnd(AppListItem* item) {
    if (!IsListed(item)) {
        m_items.push_back(item);
        LOG_DEBUG("New applist item is: [name: %s, unique id: %s]", item->GetVisibleName().c_str(),
                  item->GetUnigueId().c_str());
        NotifyChanged();
    }
    if (IsSelectionEmpty()) {
        m_selection = item;
        LOG_DEBUG("There is not selected item. Make newly added Item selected");
        NotifySelected();
    }
}

void DefaultAppListModel::RemoveItem(AppListItem* item) {
    const auto removed = Find(item);
    if (removed == m_items.end()) {
        return;
    }
    // The new selection is chosen before the removal, because it depends on the item's position.
    const bool selectionChanged = IsSelected(*removed);
    if (selectionChanged) {
        AppListItem* nearest = FindNearestItem(*removed);
        if (nearest != nullptr) {
            LOG_DEBUG("Found new item to be selected");
            m_selection = nearest;
        } else {
            LOG_DEBUG("Make empty selection");
            m_selection = m_emptyItem;
        }
    }
    // The caller deletes the item after this call, so it must be out of the list and of the
    // selection before the listeners are called.
    m_items.erase(removed);
    LOG_DEBUG("Removed item form list");
    NotifyChanged();
    LOG_DEBUG("Sent item change event");
    if (selectionChanged) {
        NotifySelected();
        LOG_DEBUG("Selection has been modified. Sent item selection event");
    }
}

void DefaultAppListModel::ModifyItem(AppListItem* oldItem, AppListItem* newItem) {
    const auto replaced = Find(oldItem);
    if (replaced == m_items.end()) {
        return;
    }
    const bool selectionChanged = IsSelected(*replaced);
    if (selectionChanged) {
        m_selection = newItem;
        // Log readers know this text, although the selection moves to newItem.
        LOG_DEBUG("Selection cleared");
    }
    // The new item takes the old one's place, so that the row does not jump.
    *replaced = newItem;
    LOG_DEBUG("Replaced item");
    NotifyChanged();
    LOG_DEBUG("Sent item change event");
    if (selectionChanged) {
        NotifySelected();
        LOG_DEBUG("Selection has been modified. Sent item selection event");
    }
}

int DefaultAppListModel::GetItemsCount() {
    return static_cast<int>(m_items.size());
}

void DefaultAppListModel::AddItemSelectionListener(ItemSelectionListener* listener) {
    LOG_DEBUG("AddItemSelectionListener, listener address :%d", AddressForLog(listener));
    AddOnce(m_selectionListeners, listener);
}

void DefaultAppListModel::RemoveItemSelectionListener(ItemSelectionListener* listener) {
    std::erase(m_selectionListeners, listener);
}

void DefaultAppListModel::AddItemChangeListener(ItemChangeListener* listener) {
    LOG_DEBUG("AddItemChangeListener, listener address :%d", AddressForLog(listener));
    AddOnce(m_changeListeners, listener);
}

void DefaultAppListModel::RemoveItemChangeListener(ItemChangeListener* listener) {
    std::erase(m_changeListeners, listener);
}

void DefaultAppListModel::AddItemClickedListener(ItemClickListener* listener) {
    LOG_DEBUG("AddItemClickedListener, listener address :%d", AddressForLog(listener));
    AddOnce(m_clickListeners, listener);
}

void DefaultAppListModel::RemoveItemClickedListener(ItemClickListener* listener) {
    std::erase(m_clickListeners, listener);
}

AppListItem* DefaultAppListModel::FindNearestItem(AppListItem* item) {
    if (m_items.size() < 2) {
        LOG_DEBUG("Item list is empty or there is one item that can not be qualified as nearest");
        return nullptr;
    }
    const auto position = Find(item);
    if (position == m_items.end()) {
        return nullptr;
    }
    // The next row moves up to the place of the removed one, so the focus stays where it is.
    if (position + 1 != m_items.end()) {
        LOG_DEBUG("Next element is nearest");
        return *(position + 1);
    }
    // The list has at least two items, so the last one has a predecessor.
    LOG_DEBUG("Previous element is nearest");
    return *(position - 1);
}

DefaultAppListModel::Items::iterator DefaultAppListModel::Find(AppListItem* item) {
    return std::find_if(m_items.begin(), m_items.end(), ApplistItemComparator(item));
}

bool DefaultAppListModel::IsListed(AppListItem* item) {
    return Find(item) != m_items.end();
}

bool DefaultAppListModel::IsSelected(AppListItem* item) {
    return m_selection->GetUnigueId() == item->GetUnigueId();
}

// Compares ids and not addresses: any item with an empty id means "no selection".
bool DefaultAppListModel::IsSelectionEmpty() {
    return IsSelected(m_emptyItem);
}

void DefaultAppListModel::NotifyChanged() {
    for (ItemChangeListener* listener : m_changeListeners) {
        listener->ItemChanged(this);
    }
}

void DefaultAppListModel::NotifySelected() {
    for (ItemSelectionListener* listener : m_selectionListeners) {
        listener->ItemSelected(this);
    }
}
