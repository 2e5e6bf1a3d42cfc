// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "unit/start/FakeGraph.h"

#include <new>

#include "applist/AppList.h"
#include "applist/DefaultAppListControl.h"
#include "applist/DefaultAppListModel.h"
#include "applist/DefaultAppListRenderer.h"
#include "applist/LocalAppListModel.h"

using applist::test::Graph;

namespace applist::test {
namespace {

void Note(const char* event) {
    Graph().events.emplace_back(event);
}

}  // namespace

GraphJournal& Graph() {
    static GraphJournal journal;
    return journal;
}

}  // namespace applist::test

AppList::AppList(AppListModel* model, AppListRenderer* renderer, AppListControl* control)
    : m_model(model), m_renderer(renderer), m_control(control) {
    applist::test::Note("new list");
    Graph().list = this;
    Graph().listModel = model;
    Graph().listRenderer = renderer;
    Graph().listControl = control;
}

DefaultAppListModel::DefaultAppListModel() : m_selection(nullptr), m_emptyItem(nullptr) {
    applist::test::Note("new default model");
    Graph().defaultModel = this;
}
DefaultAppListModel::~DefaultAppListModel() {
    applist::test::Note("delete default model");
}
void DefaultAppListModel::SetSelection(AppListItem* /*item*/) {}
AppListItem* DefaultAppListModel::GetSelection() {
    return nullptr;
}
std::vector<AppListItem*> DefaultAppListModel::GetAllItems() {
    return {};
}
void DefaultAppListModel::SetClicked(AppListItem* /*item*/) {}
void DefaultAppListModel::RemoveAllItems() {}
void DefaultAppListModel::AddItems(const std::vector<AppListItem*>& /*items*/) {}
void DefaultAppListModel::AddItemAtEnd(AppListItem* /*item*/) {}
void DefaultAppListModel::RemoveItem(AppListItem* /*item*/) {}
void DefaultAppListModel::ModifyItem(AppListItem* /*oldItem*/, AppListItem* /*newItem*/) {}
int DefaultAppListModel::GetItemsCount() {
    return 0;
}
void DefaultAppListModel::AddItemSelectionListener(ItemSelectionListener* /*listener*/) {}
void DefaultAppListModel::RemoveItemSelectionListener(ItemSelectionListener* /*listener*/) {}
void DefaultAppListModel::AddItemChangeListener(ItemChangeListener* /*listener*/) {}
void DefaultAppListModel::RemoveItemChangeListener(ItemChangeListener* /*listener*/) {}
void DefaultAppListModel::AddItemClickedListener(ItemClickListener* /*listener*/) {}
void DefaultAppListModel::RemoveItemClickedListener(ItemClickListener* /*listener*/) {}

DefaultAppListRenderer::DefaultAppListRenderer(const std::string& name) : m_name(name) {
    applist::test::Note("new renderer");
    Graph().rendererGot = name;
    Graph().renderer = this;
}
DefaultAppListRenderer::~DefaultAppListRenderer() {
    applist::test::Note("delete renderer");
}
void DefaultAppListRenderer::SetModel(AppListModel* /*model*/) {}
void DefaultAppListRenderer::ItemSelected(AppListModel* /*model*/) {}
void DefaultAppListRenderer::ItemChanged(AppListModel* /*model*/) {}

DefaultAppListControl::DefaultAppListControl() {
    if (Graph().controlThrows) {
        throw std::bad_alloc();
    }
    applist::test::Note("new control");
    Graph().control = this;
}
DefaultAppListControl::~DefaultAppListControl() {
    applist::test::Note("delete control");
}
void DefaultAppListControl::SetModel(AppListModel* /*model*/) {}
void DefaultAppListControl::ItemSelected(AppListModel* /*model*/) {}
