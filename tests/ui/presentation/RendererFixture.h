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

/// Gives tests access to the renderer's widgets.
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
    /// The ids of all rows in order.
    std::string Rows() const;
    /// The id of the row with the focus, or empty.
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

/// A renderer with real widgets, connected to a model that the test controls. Initially the window
/// is not focused.
class RendererTest : public testing::Test {
protected:
    RendererTest() {
        HeadlessToolkit::TakeFocus(renderer->m_window);
        renderer->SetModel(&model);
        Forget();
    }
    // Destroys the renderer while model and toolkit still exist.
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
