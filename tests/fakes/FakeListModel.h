// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "applist/AppListModel.h"
#include "applist/DefaultAppListItem.h"

namespace applist::test {

/// A model without logic: it holds the items that the test sets, notifies its listeners when the
/// test asks, and records the calls that it receives.
class FakeListModel : public AppListModel {
public:
    /// The results of GetAllItems() and GetSelection(). SetSelection() accepts any item.
    std::vector<AppListItem*> items;
    AppListItem* selection = &nothing;

    /// Every call, oldest first: "GetAllItems", "SetSelection(id)". Registrations name the
    /// listener only by kind: "AddItemSelectionListener".
    std::vector<std::string> history;
    /// Called with each entry of the history when it is added.
    std::function<void(const std::string&)> onCall = [](const std::string&) {};
    std::vector<ItemSelectionListener*> selectionListeners;
    std::vector<ItemChangeListener*> changeListeners;
    std::vector<ItemClickListener*> clickListeners;
    /// The last item, and the last batch, that a call received.
    AppListItem* item = nullptr;
    std::vector<AppListItem*> added;

    /// Sets the items, selects one and notifies the listeners, as a model does.
    void Show(const std::vector<AppListItem*>& newItems, AppListItem* newSelection);
    /// Selects the item and notifies the listeners.
    void Select(AppListItem* selected);

    void SetSelection(AppListItem* argument) override;
    AppListItem* GetSelection() override;
    std::vector<AppListItem*> GetAllItems() override;
    void SetClicked(AppListItem* argument) override;
    void RemoveAllItems() override;
    void AddItems(const std::vector<AppListItem*>& newItems) override;
    void AddItemAtEnd(AppListItem* argument) override;
    void RemoveItem(AppListItem* argument) override;
    void ModifyItem(AppListItem* oldItem, AppListItem* newItem) override;
    int GetItemsCount() override;
    void AddItemSelectionListener(ItemSelectionListener* listener) override;
    void RemoveItemSelectionListener(ItemSelectionListener* listener) override;
    void AddItemChangeListener(ItemChangeListener* listener) override;
    void RemoveItemChangeListener(ItemChangeListener* listener) override;
    void AddItemClickedListener(ItemClickListener* listener) override;
    void RemoveItemClickedListener(ItemClickListener* listener) override;

private:
    void Record(const std::string& call);
    void RecordItem(const std::string& operation, AppListItem* argument);
    void NotifySelected();

    DefaultAppListItem nothing;
};

}  // namespace applist::test
