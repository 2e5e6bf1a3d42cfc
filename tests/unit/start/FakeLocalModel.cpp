// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The local model of the fake graph. It ignores all calls and sends no events.
#include "applist/LocalAppListModel.h"
#include "unit/start/FakeGraph.h"

using applist::test::Graph;

LocalAppListModel::LocalAppListModel(AppListModel* model) : m_ipc("Applist"), m_model(model) {
    Graph().events.emplace_back("new local model");
    Graph().localModel = this;
    Graph().localModelGot = model;
}
LocalAppListModel::~LocalAppListModel() {
    Graph().events.emplace_back("delete local model");
}
void LocalAppListModel::SetSelection(AppListItem* /*item*/) {}
AppListItem* LocalAppListModel::GetSelection() {
    return nullptr;
}
std::vector<AppListItem*> LocalAppListModel::GetAllItems() {
    return {};
}
void LocalAppListModel::SetClicked(AppListItem* /*item*/) {}
void LocalAppListModel::RemoveAllItems() {}
void LocalAppListModel::AddItems(const std::vector<AppListItem*>& /*items*/) {}
void LocalAppListModel::AddItemAtEnd(AppListItem* /*item*/) {}
void LocalAppListModel::RemoveItem(AppListItem* /*item*/) {}
void LocalAppListModel::ModifyItem(AppListItem* /*oldItem*/, AppListItem* /*newItem*/) {}
int LocalAppListModel::GetItemsCount() {
    return 0;
}
void LocalAppListModel::AddItemSelectionListener(ItemSelectionListener* /*listener*/) {}
void LocalAppListModel::RemoveItemSelectionListener(ItemSelectionListener* /*listener*/) {}
void LocalAppListModel::AddItemChangeListener(ItemChangeListener* /*listener*/) {}
void LocalAppListModel::RemoveItemChangeListener(ItemChangeListener* /*listener*/) {}
void LocalAppListModel::AddItemClickedListener(ItemClickListener* /*listener*/) {}
void LocalAppListModel::RemoveItemClickedListener(ItemClickListener* /*listener*/) {}
void LocalAppListModel::ItemSelected(AppListModel* /*model*/) {}
void LocalAppListModel::ItemChanged(AppListModel* /*model*/) {}
void LocalAppListModel::ItemClicked(AppListModel* /*model*/) {}
