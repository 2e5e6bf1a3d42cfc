// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "applist/AppListItem.h"

class AppListModel;

/// Listener for changes of a model's selection. Main thread only.
class ItemSelectionListener {
public:
    /// model has changed; read the new selection from it.
    virtual void ItemSelected(AppListModel* model) = 0;
    virtual ~ItemSelectionListener() = default;
};

/// Listener for changes of a model's list: items were added, removed, replaced or cleared. Main
/// thread only.
class ItemChangeListener {
public:
    /// model has changed; read the new list from it.
    virtual void ItemChanged(AppListModel* model) = 0;
    virtual ~ItemChangeListener() = default;
};

/// Called when the viewer activates an item. Main thread only.
class ItemClickListener {
public:
    /// model is the model in which the item was activated.
    virtual void ItemClicked(AppListModel* model) = 0;
    virtual ~ItemClickListener() = default;
};

/// An ordered list of items. At most one of them is selected.
///
/// Models, items and listeners refer to each other by raw pointer and do not own each other: items
/// and listeners must outlive their membership in the model. Listeners are called synchronously in
/// the order of registration. During a call a listener must not register or unregister listeners of
/// its own kind, unless an implementation allows it. Main thread only.
class AppListModel {
public:
    /// Selects the listed item that has the argument's id. Null or an empty id clears the
    /// selection.
    virtual void SetSelection(AppListItem* item) = 0;
    /// Returns the selected item, or an item with an empty id if nothing is selected; never null.
    virtual AppListItem* GetSelection() = 0;
    /// Returns the items in list order. The caller owns the vector but not the items.
    virtual std::vector<AppListItem*> GetAllItems() = 0;
    /// Notifies the click listeners that the viewer has activated the item, which must not be null.
    virtual void SetClicked(AppListItem* item) = 0;
    virtual void RemoveAllItems() = 0;
    /// Appends the items whose ids are not yet listed.
    virtual void AddItems(const std::vector<AppListItem*>& items) = 0;
    /// Appends the item unless its id is already listed.
    virtual void AddItemAtEnd(AppListItem* item) = 0;
    /// Removes the listed item that has the argument's id.
    virtual void RemoveItem(AppListItem* item) = 0;
    /// Replaces the listed item that has oldItem's id by newItem.
    virtual void ModifyItem(AppListItem* oldItem, AppListItem* newItem) = 0;
    virtual int GetItemsCount() = 0;

    /// Adding a listener that is already registered, or removing one that is not, does not have an
    /// effect.
    virtual void AddItemSelectionListener(ItemSelectionListener* listener) = 0;
    virtual void RemoveItemSelectionListener(ItemSelectionListener* listener) = 0;
    virtual void AddItemChangeListener(ItemChangeListener* listener) = 0;
    virtual void RemoveItemChangeListener(ItemChangeListener* listener) = 0;
    virtual void AddItemClickedListener(ItemClickListener* listener) = 0;
    virtual void RemoveItemClickedListener(ItemClickListener* listener) = 0;

    virtual ~AppListModel() = default;
};
