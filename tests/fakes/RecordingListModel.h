// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "applist/AppListModel.h"
#include "fakes/FakePlatformLog.h"

namespace applist::test {

/// A model for tests of classes that forward calls. It notes each call in the history of
/// FakePlatformLog, so that the order relative to other events can be checked, stores the arguments
/// and returns what the test has set. It does not notify listeners; FakeListModel does.
class RecordingListModel : public AppListModel {
public:
    /// The results of the calls.
    AppListItem* selection = nullptr;
    std::vector<AppListItem*> items;
    int count = 0;
    /// The last arguments.
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
