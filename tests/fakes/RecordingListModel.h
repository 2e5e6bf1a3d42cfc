// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "applist/AppListModel.h"
#include "fakes/FakePlatformLog.h"

namespace applist::test {

/// Stands where calls are passed on to a model: notes each in the history of FakePlatformLog,
/// between what others do, keeps its arguments and answers what a test set. It tells nobody
/// anything; for a model that its listeners hear of see FakeListModel.
class RecordingListModel : public AppListModel {
public:
    /// The answers.
    AppListItem* selection = nullptr;
    std::vector<AppListItem*> items;
    int count = 0;
    /// The arguments that came last.
    AppListItem* item = nullptr;
    AppListItem* newItem = nullptr;
    std::vector<AppListItem*> added;
    ItemSelectionListener* selectionListener = nullptr;
    ItemChangeListener* changeListener = nullptr;
    ItemClickListener* clickListener = nullptr;

    void SetSelection(AppListItem* argument) override { NoteItem("SetSelection", argument); }
    AppListItem* GetSelection() override {
        Note("GetSelection");
        return selection;
    }
    std::vector<AppListItem*> GetAllItems() override {
        Note("GetAllItems");
        return items;
    }
    void SetClicked(AppListItem* argument) override { NoteItem("SetClicked", argument); }
    void RemoveAllItems() override { Note("RemoveAllItems"); }
    void AddItems(const std::vector<AppListItem*>& argument) override {
        Note("AddItems");
        added = argument;
    }
    void AddItemAtEnd(AppListItem* argument) override { NoteItem("AddItemAtEnd", argument); }
    void RemoveItem(AppListItem* argument) override { NoteItem("RemoveItem", argument); }
    void ModifyItem(AppListItem* oldItem, AppListItem* replacement) override {
        NoteItem("ModifyItem", oldItem);
        newItem = replacement;
    }
    int GetItemsCount() override {
        Note("GetItemsCount");
        return count;
    }

    void AddItemSelectionListener(ItemSelectionListener* listener) override {
        Note("AddItemSelectionListener");
        selectionListener = listener;
    }
    void RemoveItemSelectionListener(ItemSelectionListener* listener) override {
        Note("RemoveItemSelectionListener");
        selectionListener = listener;
    }
    void AddItemChangeListener(ItemChangeListener* listener) override {
        Note("AddItemChangeListener");
        changeListener = listener;
    }
    void RemoveItemChangeListener(ItemChangeListener* listener) override {
        Note("RemoveItemChangeListener");
        changeListener = listener;
    }
    void AddItemClickedListener(ItemClickListener* listener) override {
        Note("AddItemClickedListener");
        clickListener = listener;
    }
    void RemoveItemClickedListener(ItemClickListener* listener) override {
        Note("RemoveItemClickedListener");
        clickListener = listener;
    }

private:
    void NoteItem(const char* operation, AppListItem* argument) {
        Note(operation);
        item = argument;
    }
};

}  // namespace applist::test
