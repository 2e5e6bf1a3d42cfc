// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <utility>

#include "applist/AppListModel.h"
#include "fakes/FakePlatformLog.h"

namespace applist::test {

/// The state of a model as text: "[a b*]", the ids in list order with a star after the selected
/// object. A selection that is not in the list is appended as "[a] ~b"; an empty selection is not
/// shown.
inline std::string StateOf(AppListModel* model) {
    AppListItem* selection = model->GetSelection();
    std::string ids;
    bool selectionListed = false;
    for (AppListItem* item : model->GetAllItems()) {
        ids += ids.empty() ? "" : " ";
        ids += item->GetUnigueId();
        ids += item == selection ? "*" : "";
        selectionListed = selectionListed || item == selection;
    }
    const std::string stray = selection->GetUnigueId();
    return "[" + ids + "]" + (selectionListed || stray.empty() ? "" : " ~" + stray);
}

/// Receives all events of a model and notes each in the history of FakePlatformLog with the model's
/// state at that moment: "NAME changed [a b*]".
class RecordingListener : public ItemSelectionListener,
                          public ItemChangeListener,
                          public ItemClickListener {
public:
    explicit RecordingListener(std::string name) : m_name(std::move(name)) {}

    /// Registers it for all three kinds of events.
    void ListenTo(AppListModel& model) {
        model.AddItemSelectionListener(this);
        model.AddItemChangeListener(this);
        model.AddItemClickedListener(this);
    }

    void ItemSelected(AppListModel* model) override { NoteEvent("selected", model); }
    void ItemChanged(AppListModel* model) override { NoteEvent("changed", model); }
    void ItemClicked(AppListModel* model) override { NoteEvent("clicked", model); }

private:
    void NoteEvent(const char* what, AppListModel* model) const {
        Note(m_name + " " + what + " " + StateOf(model));
    }

    std::string m_name;
};

}  // namespace applist::test
