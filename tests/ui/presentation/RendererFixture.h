// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Elementary.h>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "applist/DefaultAppListItem.h"
#include "applist/DefaultAppListRenderer.h"
#include "fakes/FakeApp.h"
#include "fakes/FakeListModel.h"
#include "fakes/FakePlatformLog.h"
#include "fakes/FakeText.h"
#include "support/HeadlessToolkit.h"
#include "support/Scene.h"
#include "ui/presentation/ToolkitCalls.h"

namespace applist::test {

/// The renderer with its widgets in reach.
class OpenRenderer : public DefaultAppListRenderer {
public:
    using DefaultAppListRenderer::Create;
    using DefaultAppListRenderer::DefaultAppListRenderer;
    using DefaultAppListRenderer::m_background;
    using DefaultAppListRenderer::m_focusItem;
    using DefaultAppListRenderer::m_genlist;
    using DefaultAppListRenderer::m_itemClass;
    using DefaultAppListRenderer::m_selectionPropagator;
    using DefaultAppListRenderer::m_window;

    Elm_Object_Item* RowOf(const std::string& id) const;
    /// The ids of the rows from the first to the last.
    std::string Rows() const;
    /// The id of the row that has the focus, empty where none has.
    std::string FocusedRow() const;
};

inline std::string IdOf(const Elm_Object_Item* row) {
    return static_cast<AppListItem*>(elm_object_item_data_get(row))->GetUnigueId();
}

inline Elm_Object_Item* OpenRenderer::RowOf(const std::string& id) const {
    Elm_Object_Item* row = elm_genlist_first_item_get(m_genlist);
    while (row != nullptr && IdOf(row) != id) {
        row = elm_genlist_item_next_get(row);
    }
    return row;
}

inline std::string OpenRenderer::Rows() const {
    std::string rows;
    for (Elm_Object_Item* row = elm_genlist_first_item_get(m_genlist); row != nullptr;
         row = elm_genlist_item_next_get(row)) {
        rows += IdOf(row);
    }
    return rows;
}

inline std::string OpenRenderer::FocusedRow() const {
    std::string focused;
    for (Elm_Object_Item* row = elm_genlist_first_item_get(m_genlist); row != nullptr;
         row = elm_genlist_item_next_get(row)) {
        focused += elm_object_item_focus_get(row) != EINA_FALSE ? IdOf(row) : "";
    }
    return focused;
}

/// A renderer on real widgets, connected to a model that the test drives. The window has no focus
/// yet.
class RendererTest : public testing::Test {
protected:
    RendererTest() {
        HeadlessToolkit::TakeFocus(renderer->m_window);
        renderer->SetModel(&model);
        Forget();
    }
    // The renderer goes while model and toolkit still work.
    void TearDown() override { renderer.reset(); }

    /// Gives the window the focus, shows the items, and clears the recorded calls and log lines.
    void ShowFocused(const std::vector<AppListItem*>& items, AppListItem* selection) {
        HeadlessToolkit::GiveFocus(renderer->m_window);
        model.Show(items, selection);
        HeadlessToolkit::Settle();
        Forget();
    }
    void Forget() {
        ClearLog();
        ToolkitCalls().clear();
        model.history.clear();
    }

    HeadlessToolkit toolkit{{APPLIST_TEST_THEME}};
    FakeListModel model;
    DefaultAppListItem a{"Alpha", "a"};
    DefaultAppListItem b{"Beta", "b"};
    DefaultAppListItem c{"Gamma", "c"};
    std::unique_ptr<OpenRenderer> renderer = std::make_unique<OpenRenderer>("org.vantu.applist");
};

}  // namespace applist::test
