// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "fakes/FakeListModel.h"

#include <algorithm>

namespace applist::test {
namespace {

template <typename Listener>
void Add(std::vector<Listener*>& listeners, Listener* listener) {
    if (std::find(listeners.begin(), listeners.end(), listener) == listeners.end()) {
        listeners.push_back(listener);
    }
}

template <typename Listener>
void Remove(std::vector<Listener*>& listeners, Listener* listener) {
    listeners.erase(std::remove(listeners.begin(), listeners.end(), listener), listeners.end());
}

std::string Call(const std::string& operation, AppListItem* item) {
    return operation + "(" + (item != nullptr ? item->GetUnigueId() : "null") + ")";
}

}  // namespace

void FakeListModel::Show(const std::vector<AppListItem*>& newItems, AppListItem* newSelection) {
    items = newItems;
    selection = newSelection != nullptr ? newSelection : &nothing;
    for (ItemChangeListener* listener : changeListeners) {
        listener->ItemChanged(this);
    }
}

void FakeListModel::Select(AppListItem* item) {
    selection = item != nullptr ? item : &nothing;
    NotifySelected();
}

void FakeListModel::NotifySelected() {
    for (ItemSelectionListener* listener : std::vector(selectionListeners)) {
        listener->ItemSelected(this);
    }
}

void FakeListModel::SetSelection(AppListItem* item) {
    history.push_back(Call("SetSelection", item));
    Select(item);
}

AppListItem* FakeListModel::GetSelection() {
    history.emplace_back("GetSelection");
    return selection;
}

std::vector<AppListItem*> FakeListModel::GetAllItems() {
    history.emplace_back("GetAllItems");
    return items;
}

void FakeListModel::SetClicked(AppListItem* item) {
    history.push_back(Call("SetClicked", item));
}

void FakeListModel::RemoveAllItems() {
    history.emplace_back("RemoveAllItems");
}

void FakeListModel::AddItems(const std::vector<AppListItem*>& /*newItems*/) {
    history.emplace_back("AddItems");
}

void FakeListModel::AddItemAtEnd(AppListItem* item) {
    history.push_back(Call("AddItemAtEnd", item));
}

void FakeListModel::RemoveItem(AppListItem* item) {
    history.push_back(Call("RemoveItem", item));
}

void FakeListModel::ModifyItem(AppListItem* oldItem, AppListItem* /*newItem*/) {
    history.push_back(Call("ModifyItem", oldItem));
}

int FakeListModel::GetItemsCount() {
    history.emplace_back("GetItemsCount");
    return static_cast<int>(items.size());
}

void FakeListModel::AddItemSelectionListener(ItemSelectionListener* listener) {
    history.emplace_back("AddItemSelectionListener");
    Add(selectionListeners, listener);
}

void FakeListModel::RemoveItemSelectionListener(ItemSelectionListener* listener) {
    history.emplace_back("RemoveItemSelectionListener");
    Remove(selectionListeners, listener);
}

void FakeListModel::AddItemChangeListener(ItemChangeListener* listener) {
    history.emplace_back("AddItemChangeListener");
    Add(changeListeners, listener);
}

void FakeListModel::RemoveItemChangeListener(ItemChangeListener* listener) {
    history.emplace_back("RemoveItemChangeListener");
    Remove(changeListeners, listener);
}

void FakeListModel::AddItemClickedListener(ItemClickListener* /*listener*/) {
    history.emplace_back("AddItemClickedListener");
}

void FakeListModel::RemoveItemClickedListener(ItemClickListener* /*listener*/) {
    history.emplace_back("RemoveItemClickedListener");
}

}  // namespace applist::test
