// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "applist/AppList.h"

#include "applist/AppListControl.h"
#include "applist/AppListRenderer.h"

AppList::AppList(AppListModel* model, AppListRenderer* renderer, AppListControl* control)
    : m_model(model), m_renderer(renderer), m_control(control) {
    m_renderer->SetModel(m_model);
    m_control->SetModel(m_model);
}

void AppList::RemoveAllItems() {
    m_model->RemoveAllItems();
}

void AppList::AddItems(const std::vector<AppListItem*>& items) {
    m_model->AddItems(items);
}

void AppList::AddItemAtEnd(AppListItem* item) {
    m_model->AddItemAtEnd(item);
}

AppListItem* AppList::GetSelection() {
    return m_model->GetSelection();
}

void AppList::AddItemSelectionListener(ItemSelectionListener* listener) {
    m_model->AddItemSelectionListener(listener);
}

void AppList::RemoveItemSelectionListener(ItemSelectionListener* listener) {
    m_model->RemoveItemSelectionListener(listener);
}

void AppList::AddItemChangeListener(ItemChangeListener* listener) {
    m_model->AddItemChangeListener(listener);
}

void AppList::RemoveItemChangeListener(ItemChangeListener* listener) {
    m_model->RemoveItemChangeListener(listener);
}

void AppList::AddItemClickedListener(ItemClickListener* listener) {
    m_model->AddItemClickedListener(listener);
}

void AppList::RemoveItemClickedListener(ItemClickListener* listener) {
    m_model->RemoveItemClickedListener(listener);
}
