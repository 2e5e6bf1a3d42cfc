// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "applist/AppListModel.h"

class AppListControl;
class AppListRenderer;

/// Connects a model with its renderer and control, and offers a part of the model's operations.
///
/// Owns nothing: model, renderer and control must outlive it. Operations that edit or activate
/// single items are left out; renderer and control call them on the model itself. Main thread only.
class AppList {
public:
    /// Connects the model to the renderer and then to the control, so that the list is shown before
    /// a key can act on it. The arguments must not be null.
    AppList(AppListModel* model, AppListRenderer* renderer, AppListControl* control);

    // These forward to the model's operation of the same name.
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
