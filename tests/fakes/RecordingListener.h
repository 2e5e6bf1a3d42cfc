// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <utility>

#include "applist/AppListModel.h"
#include "fakes/FakePlatformLog.h"

namespace applist::test {

/// What a model shows to someone who asks: "[a b*]", the ids in list order, the selected object
/// starred. A selection that is not in the list follows as "[a] ~b", an empty one as nothing.
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

/// Hears everything that a model reports and notes it in the history of FakePlatformLog together
/// with what the model shows at that moment: "NAME changed [a b*]".
class RecordingListener : public ItemSelectionListener,
                          public ItemChangeListener,
                          public ItemClickListener {
public:
    explicit RecordingListener(std::string name) : m_name(std::move(name)) {}

    /// Registers it for all three kinds.
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
