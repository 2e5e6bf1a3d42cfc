// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "fakes/FakeScreen.h"

#include <Elementary.h>
#include <algorithm>
#include <map>
#include <string>

#include "app.h"
#include "applist/DefaultAppListRenderer.h"
#include "fakes/FakePlatformLog.h"

namespace applist::test {
namespace {

AppListItem* RowOf(const std::string& id) {
    const auto& rows = TheScreen().rows;
    const auto row = std::find_if(rows.begin(), rows.end(),
                                  [&](AppListItem* item) { return item->GetUnigueId() == id; });
    return row != rows.end() ? *row : nullptr;
}

void FocusSelection(AppListModel* model) {
    if (AppListItem* row = RowOf(model->GetSelection()->GetUnigueId())) {
        TheScreen().focused = row;
    }
}

}  // namespace

FakeScreen& TheScreen() {
    static FakeScreen screen;
    return screen;
}

void FakeScreen::MoveFocus(std::size_t row) {
    focused = rows[row];
    model->RemoveItemSelectionListener(renderer);
    model->SetSelection(focused);
    model->AddItemSelectionListener(renderer);
}

void FakeScreen::Activate(std::size_t row) const {
    model->SetClicked(rows[row]);
    ui_app_exit();
}

}  // namespace applist::test

using applist::test::TheScreen;

DefaultAppListRenderer::DefaultAppListRenderer(const std::string& name) : m_name(name) {
    applist::test::Note("renderer created: " + name);
    TheScreen().renderer = this;
}

DefaultAppListRenderer::~DefaultAppListRenderer() {
    if (m_model != nullptr) {
        m_model->RemoveItemSelectionListener(this);
        m_model->RemoveItemChangeListener(this);
    }
    TheScreen() = {};
}

void DefaultAppListRenderer::SetModel(AppListModel* model) {
    applist::test::Note("renderer has its model");
    m_model = model;
    TheScreen().model = model;
    m_model->AddItemSelectionListener(this);
    m_model->AddItemChangeListener(this);
}

void DefaultAppListRenderer::ItemSelected(AppListModel* model) {
    applist::test::FocusSelection(model);
}

void DefaultAppListRenderer::ItemChanged(AppListModel* model) {
    auto& screen = TheScreen();
    // Reads the previous items, which must still exist.
    std::map<std::string, AppListItem*> known;
    for (AppListItem* row : screen.rows) {
        known[row->GetUnigueId()] = row;
    }
    screen.rows.clear();
    for (AppListItem* item : model->GetAllItems()) {
        const auto row = known.find(item->GetUnigueId());
        screen.rows.push_back(row != known.end() ? row->second : item);
    }
    if (std::find(screen.rows.begin(), screen.rows.end(), screen.focused) == screen.rows.end()) {
        screen.focused = nullptr;
    }
    applist::test::FocusSelection(model);
}

// The entry calls it if it cannot handle a launch.
extern "C" void elm_exit(void) {
    applist::test::Note("elm_exit");
}
