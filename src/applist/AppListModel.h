// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "applist/AppListItem.h"

class AppListModel;

/// Hears that a model's selection changed. Main thread only.
class ItemSelectionListener {
public:
    /// model is the one that changed; what is selected now is read from it.
    virtual void ItemSelected(AppListModel* model) = 0;
    virtual ~ItemSelectionListener() = default;
};

/// Hears that a model's list changed: items added, removed, replaced or cleared.
class ItemChangeListener {
public:
    /// model is the one that changed; what it holds now is read from it.
    virtual void ItemChanged(AppListModel* model) = 0;
    virtual ~ItemChangeListener() = default;
};

/// Hears that the viewer activated an item.
class ItemClickListener {
public:
    /// model is the one through which the item was activated.
    virtual void ItemClicked(AppListModel* model) = 0;
    virtual ~ItemClickListener() = default;
};

/// An ordered list of items, one of which may be selected.
///
/// Models, items and listeners exchange raw pointers and never own each other: items and listeners
/// must outlive their stay in the model. Listeners are called synchronously, in the order of their
/// registration; during a call a listener must not register or unregister listeners of its own
/// kind unless an implementation says otherwise. Main thread only.
class AppListModel {
public:
    /// Selects the listed item with the argument's id. Null or an empty id clears the selection.
    virtual void SetSelection(AppListItem* item) = 0;
    /// The selected item; where nothing is selected an item with an empty id, never null.
    virtual AppListItem* GetSelection() = 0;
    /// The items in list order; the vector is the caller's, the items are not.
    virtual std::vector<AppListItem*> GetAllItems() = 0;
    /// Reports that the viewer activated the item, which must not be null.
    virtual void SetClicked(AppListItem* item) = 0;
    virtual void RemoveAllItems() = 0;
    /// Appends the items whose ids are not listed yet.
    virtual void AddItems(const std::vector<AppListItem*>& items) = 0;
    /// Appends the item unless its id is listed.
    virtual void AddItemAtEnd(AppListItem* item) = 0;
    /// Removes the listed item with the argument's id.
    virtual void RemoveItem(AppListItem* item) = 0;
    /// Puts newItem in the place of the listed item with oldItem's id.
    virtual void ModifyItem(AppListItem* oldItem, AppListItem* newItem) = 0;
    virtual int GetItemsCount() = 0;

    /// Registering a listener again changes nothing; removing an unknown one neither.
    virtual void AddItemSelectionListener(ItemSelectionListener* listener) = 0;
    virtual void RemoveItemSelectionListener(ItemSelectionListener* listener) = 0;
    virtual void AddItemChangeListener(ItemChangeListener* listener) = 0;
    virtual void RemoveItemChangeListener(ItemChangeListener* listener) = 0;
    virtual void AddItemClickedListener(ItemClickListener* listener) = 0;
    virtual void RemoveItemClickedListener(ItemClickListener* listener) = 0;

    virtual ~AppListModel() = default;
};
