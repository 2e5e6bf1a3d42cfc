// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "applist/AppListModel.h"

/// The in-process list, with rules for how the selection follows changes of the list.
///
/// Items are matched by ApplistItemComparator from the front. Each operation calls the change
/// listeners before the selection listeners, each kind in the order of registration. Items and
/// listeners are never deleted here.
class DefaultAppListModel : public AppListModel {
public:
    DefaultAppListModel();
    /// Does not call listeners and does not access items.
    ~DefaultAppListModel() override;
    DefaultAppListModel(const DefaultAppListModel&) = delete;
    DefaultAppListModel& operator=(const DefaultAppListModel&) = delete;
    DefaultAppListModel(DefaultAppListModel&&) = delete;
    DefaultAppListModel& operator=(DefaultAppListModel&&) = delete;

    /// Selects the listed item that has the argument's id, which need not be the argument itself.
    /// Does nothing if the id is not listed. Clearing the selection, by null or an empty id, does
    /// not call the listeners.
    void SetSelection(AppListItem* item) override;
    AppListItem* GetSelection() override;
    std::vector<AppListItem*> GetAllItems() override;
    void SetClicked(AppListItem* item) override;
    /// If the list was not empty, calls both the change and the selection listeners, the latter
    /// even if nothing was selected.
    void RemoveAllItems() override;
    /// Calls the change listeners once for the whole batch, unless all ids were already listed. If
    /// nothing is selected, the first item of the list is then selected.
    void AddItems(const std::vector<AppListItem*>& items) override;
    /// Unlike AddItems(), selects the argument itself if nothing is selected, even if its id was
    /// already listed and the argument was not appended.
    void AddItemAtEnd(AppListItem* item) override;
    /// If the item was selected, selects the nearest item before the listeners are called.
    void RemoveItem(AppListItem* item) override;
    /// If the item was selected, selects newItem before the listeners are called. Does not check
    /// whether newItem's id is listed elsewhere.
    void ModifyItem(AppListItem* oldItem, AppListItem* newItem) override;
    int GetItemsCount() override;

    void AddItemSelectionListener(ItemSelectionListener* listener) override;
    void RemoveItemSelectionListener(ItemSelectionListener* listener) override;
    void AddItemChangeListener(ItemChangeListener* listener) override;
    void RemoveItemChangeListener(ItemChangeListener* listener) override;
    void AddItemClickedListener(ItemClickListener* listener) override;
    void RemoveItemClickedListener(ItemClickListener* listener) override;

    /// Returns the item to select if the given one is removed: the next one, else the previous one.
    /// Returns null if the item is not listed or is the only one.
    AppListItem* FindNearestItem(AppListItem* item);

private:
    using Items = std::vector<AppListItem*>;

    Items::iterator Find(AppListItem* item);
    bool IsListed(AppListItem* item);
    bool IsSelected(AppListItem* item);
    bool IsSelectionEmpty();
    // These do not log, because a log line carries the name of the calling operation.
    void NotifyChanged();
    void NotifySelected();

    Items m_items;
    AppListItem* m_selection;  ///< Never null; m_emptyItem if nothing is selected.
    AppListItem* m_emptyItem;  ///< Owned; its name and id are empty.
    std::vector<ItemSelectionListener*> m_selectionListeners;
    std::vector<ItemChangeListener*> m_changeListeners;
    std::vector<ItemClickListener*> m_clickListeners;
};
