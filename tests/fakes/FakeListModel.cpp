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

void FakeListModel::Record(const std::string& call) {
    history.push_back(call);
    onCall(call);
}

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
    Record(Call("SetSelection", item));
    Select(item);
}

AppListItem* FakeListModel::GetSelection() {
    Record("GetSelection");
    return selection;
}

std::vector<AppListItem*> FakeListModel::GetAllItems() {
    Record("GetAllItems");
    return items;
}

void FakeListModel::SetClicked(AppListItem* item) {
    Record(Call("SetClicked", item));
}

void FakeListModel::RemoveAllItems() {
    Record("RemoveAllItems");
}

void FakeListModel::AddItems(const std::vector<AppListItem*>& /*newItems*/) {
    Record("AddItems");
}

void FakeListModel::AddItemAtEnd(AppListItem* item) {
    Record(Call("AddItemAtEnd", item));
}

void FakeListModel::RemoveItem(AppListItem* item) {
    Record(Call("RemoveItem", item));
}

void FakeListModel::ModifyItem(AppListItem* oldItem, AppListItem* /*newItem*/) {
    Record(Call("ModifyItem", oldItem));
}

int FakeListModel::GetItemsCount() {
    Record("GetItemsCount");
    return static_cast<int>(items.size());
}

void FakeListModel::AddItemSelectionListener(ItemSelectionListener* listener) {
    Record("AddItemSelectionListener");
    Add(selectionListeners, listener);
}

void FakeListModel::RemoveItemSelectionListener(ItemSelectionListener* listener) {
    Record("RemoveItemSelectionListener");
    Remove(selectionListeners, listener);
}

void FakeListModel::AddItemChangeListener(ItemChangeListener* listener) {
    Record("AddItemChangeListener");
    Add(changeListeners, listener);
}

void FakeListModel::RemoveItemChangeListener(ItemChangeListener* listener) {
    Record("RemoveItemChangeListener");
    Remove(changeListeners, listener);
}

void FakeListModel::AddItemClickedListener(ItemClickListener* /*listener*/) {
    Record("AddItemClickedListener");
}

void FakeListModel::RemoveItemClickedListener(ItemClickListener* /*listener*/) {
    Record("RemoveItemClickedListener");
}

}  // namespace applist::test
