// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "applist/AppListModel.h"

/// The list held in this process, with the rules by which the selection follows its changes.
///
/// Items are matched by ApplistItemComparator, from the front. Change listeners hear of an
/// operation before selection listeners do, each kind in the order of registration. Neither items
/// nor listeners are ever deleted here.
class DefaultAppListModel : public AppListModel {
public:
    DefaultAppListModel();
    /// Tells nobody and touches no item.
    ~DefaultAppListModel() override;
    DefaultAppListModel(const DefaultAppListModel&) = delete;
    DefaultAppListModel& operator=(const DefaultAppListModel&) = delete;
    DefaultAppListModel(DefaultAppListModel&&) = delete;
    DefaultAppListModel& operator=(DefaultAppListModel&&) = delete;

    /// Selects the listed item with the argument's id, which need not be the argument itself. An
    /// id that is not listed changes nothing. Clearing, by null or an empty id, is silent: only
    /// the move to an item of the list is an event.
    void SetSelection(AppListItem* item) override;
    AppListItem* GetSelection() override;
    std::vector<AppListItem*> GetAllItems() override;
    void SetClicked(AppListItem* item) override;
    /// A list that was not empty reports both a change and a selection, the latter even when
    /// nothing had been selected.
    void RemoveAllItems() override;
    /// One change event for the batch, none when every id was listed already. With nothing
    /// selected the front of the list becomes the selection, after the change listeners heard.
    void AddItems(const std::vector<AppListItem*>& items) override;
    /// Unlike AddItems(), selects the argument itself when nothing is selected, even when its id
    /// was listed already and it was not appended.
    void AddItemAtEnd(AppListItem* item) override;
    /// A removed selection passes to the nearest item, before anybody is told.
    void RemoveItem(AppListItem* item) override;
    /// A replaced selection passes to newItem, before anybody is told. Whether newItem's id is
    /// listed elsewhere is not looked at.
    void ModifyItem(AppListItem* oldItem, AppListItem* newItem) override;
    int GetItemsCount() override;

    void AddItemSelectionListener(ItemSelectionListener* listener) override;
    void RemoveItemSelectionListener(ItemSelectionListener* listener) override;
    void AddItemChangeListener(ItemChangeListener* listener) override;
    void RemoveItemChangeListener(ItemChangeListener* listener) override;
    void AddItemClickedListener(ItemClickListener* listener) override;
    void RemoveItemClickedListener(ItemClickListener* listener) override;

    /// The item to select when the given one goes away: the one behind it, else the one before it.
    /// Null when the item is not listed or nothing else is.
    AppListItem* FindNearestItem(AppListItem* item);

private:
    using Items = std::vector<AppListItem*>;

    Items::iterator Find(AppListItem* item);
    bool IsListed(AppListItem* item);
    bool IsSelected(AppListItem* item);
    bool IsSelectionEmpty();
    // Without log lines: a line carries the name of the operation, so it is written there.
    void NotifyChanged();
    void NotifySelected();

    Items m_items;
    AppListItem* m_selection;  ///< Never null; the empty item when nothing is selected.
    AppListItem* m_emptyItem;  ///< Owned; its name and id are empty.
    std::vector<ItemSelectionListener*> m_selectionListeners;
    std::vector<ItemChangeListener*> m_changeListeners;
    std::vector<ItemClickListener*> m_clickListeners;
};
