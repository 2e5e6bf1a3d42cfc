// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "FocusedList.h"

#include <algorithm>

#include "app.h"

namespace applist::headless {

FocusedList::~FocusedList() {
    if (m_model != nullptr) {
        m_model->RemoveItemSelectionListener(this);
        m_model->RemoveItemChangeListener(this);
    }
}

void FocusedList::SetModel(AppListModel* model) {
    m_model = model;
    m_model->AddItemSelectionListener(this);
    m_model->AddItemChangeListener(this);
}

void FocusedList::ItemSelected(AppListModel* /*model*/) {
    const std::string selected = m_model->GetSelection()->GetUnigueId();
    const auto items = m_model->GetAllItems();
    // An empty selection, or a selected item that is not listed, leaves the focus where it is.
    const bool listed = std::any_of(items.begin(), items.end(), [&](AppListItem* item) {
        return item->GetUnigueId() == selected;
    });
    if (listed) {
        m_id = selected;
        m_index = FocusIn(items);
    }
}

void FocusedList::ItemChanged(AppListModel* model) {
    const auto items = m_model->GetAllItems();
    if (!items.empty()) {
        m_index = FocusIn(items);
        m_id = items[m_index]->GetUnigueId();
    }
    ItemSelected(model);
}

size_t FocusedList::FocusIn(const std::vector<AppListItem*>& items) const {
    for (size_t i = 0; i < items.size(); ++i) {
        if (items[i]->GetUnigueId() == m_id) {
            return i;
        }
    }
    return std::min(m_index, items.size() - 1);
}

void FocusedList::Move(int rows) {
    const auto items = m_model->GetAllItems();
    if (items.empty()) {
        return;
    }
    const auto count = static_cast<int>(items.size());
    const int target = (static_cast<int>(FocusIn(items)) + rows + count) % count;
    m_index = static_cast<size_t>(target);
    m_id = items[m_index]->GetUnigueId();
    m_model->SetSelection(items[m_index]);
}

std::string FocusedList::Activate() {
    const auto items = m_model->GetAllItems();
    if (items.empty()) {
        return {};
    }
    AppListItem* item = items[FocusIn(items)];
    std::string id = item->GetUnigueId();
    m_model->SetClicked(item);
    ui_app_exit();
    return id;
}

}  // namespace applist::headless
