// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "applist/AppListModel.h"
#include "applist/AppListRenderer.h"

namespace applist::headless {

/// The list widget without a screen: one row has the focus, which the viewer moves and which
/// follows the model's selection. Main thread only.
class FocusedList : public AppListRenderer,
                    public ItemSelectionListener,
                    public ItemChangeListener {
public:
    FocusedList() = default;
    ~FocusedList() override;
    FocusedList(const FocusedList&) = delete;
    FocusedList& operator=(const FocusedList&) = delete;

    void SetModel(AppListModel* model) override;
    void ItemSelected(AppListModel* model) override;
    void ItemChanged(AppListModel* model) override;

    /// Move the focus by a row, round the ends, and select that row's item in the model. Do nothing
    /// without rows.
    void MoveUp() { Move(-1); }
    void MoveDown() { Move(1); }
    /// Reports the focused row's item as clicked and ends the application. Without rows, does
    /// nothing and returns an empty id. Otherwise returns the item's id.
    std::string Activate();

private:
    void Move(int rows);
    /// Returns the index of the focused row in items. REQUIRES: items is not empty.
    size_t FocusIn(const std::vector<AppListItem*>& items) const;

    AppListModel* m_model = nullptr;
    /// The id and the index of the focused row when it was last listed.
    std::string m_id;
    size_t m_index = 0;
};

}  // namespace applist::headless
