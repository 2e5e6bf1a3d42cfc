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

}  // namespace

void FakeListModel::Record(const std::string& call) {
    history.push_back(call);
    onCall(call);
}

void FakeListModel::RecordItem(const std::string& operation, AppListItem* argument) {
    item = argument;
    Record(operation + "(" + (argument != nullptr ? argument->GetUnigueId() : "null") + ")");
}

void FakeListModel::Show(const std::vector<AppListItem*>& newItems, AppListItem* newSelection) {
    items = newItems;
    selection = newSelection != nullptr ? newSelection : &nothing;
    for (ItemChangeListener* listener : changeListeners) {
        listener->ItemChanged(this);
    }
}

void FakeListModel::Select(AppListItem* selected) {
    selection = selected != nullptr ? selected : &nothing;
    NotifySelected();
}

void FakeListModel::NotifySelected() {
    for (ItemSelectionListener* listener : std::vector(selectionListeners)) {
        listener->ItemSelected(this);
    }
}

void FakeListModel::SetSelection(AppListItem* argument) {
    RecordItem("SetSelection", argument);
    Select(argument);
}

AppListItem* FakeListModel::GetSelection() {
    Record("GetSelection");
    return selection;
}

std::vector<AppListItem*> FakeListModel::GetAllItems() {
    Record("GetAllItems");
    return items;
}

void FakeListModel::SetClicked(AppListItem* argument) {
    RecordItem("SetClicked", argument);
}

void FakeListModel::RemoveAllItems() {
    Record("RemoveAllItems");
}

void FakeListModel::AddItems(const std::vector<AppListItem*>& newItems) {
    Record("AddItems");
    added = newItems;
}

void FakeListModel::AddItemAtEnd(AppListItem* argument) {
    RecordItem("AddItemAtEnd", argument);
}

void FakeListModel::RemoveItem(AppListItem* argument) {
    RecordItem("RemoveItem", argument);
}

void FakeListModel::ModifyItem(AppListItem* oldItem, AppListItem* /*newItem*/) {
    RecordItem("ModifyItem", oldItem);
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

void FakeListModel::AddItemClickedListener(ItemClickListener* listener) {
    Record("AddItemClickedListener");
    Add(clickListeners, listener);
}

void FakeListModel::RemoveItemClickedListener(ItemClickListener* listener) {
    Record("RemoveItemClickedListener");
    Remove(clickListeners, listener);
}

}  // namespace applist::test
