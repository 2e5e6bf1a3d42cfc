// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "applist/AppListModel.h"

class AppListControl;
class AppListRenderer;

/// Binds a model to what shows it and what drives it, and offers a narrow front to the model.
///
/// Owns nothing: model, renderer and control must outlive it. What would let a caller edit or
/// activate single items is left out; renderer and control reach that through the model itself.
/// Main thread only.
class AppList {
public:
    /// Connects first the renderer and then the control to the model, so that the list is on the
    /// screen before a key can act on it. None may be null.
    AppList(AppListModel* model, AppListRenderer* renderer, AppListControl* control);

    // Each is the model's operation of the same name.
    void RemoveAllItems();
    void AddItems(const std::vector<AppListItem*>& items);
    void AddItemAtEnd(AppListItem* item);
    AppListItem* GetSelection();
    void AddItemSelectionListener(ItemSelectionListener* listener);
    void RemoveItemSelectionListener(ItemSelectionListener* listener);
    void AddItemChangeListener(ItemChangeListener* listener);
    void RemoveItemChangeListener(ItemChangeListener* listener);
    void AddItemClickedListener(ItemClickListener* listener);
    void RemoveItemClickedListener(ItemClickListener* listener);

private:
    AppListModel* m_model;
    AppListRenderer* m_renderer;
    AppListControl* m_control;
};
