// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Elementary.h>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "applist/DefaultAppListControl.h"
#include "applist/DefaultAppListItem.h"
#include "applist/DefaultAppListModel.h"
#include "applist/DefaultAppListRenderer.h"
#include "display/Frames.h"
#include "display/Keyboard.h"
#include "display/Windows.h"
#include "list/ListSteps.h"
#include "support/HeadlessToolkit.h"

namespace applist::test {

/// The rows as one frame shows them.
struct Frame {
    /// The name of the row that is drawn with the focus; absent if no row is. If several rows are,
    /// which is an error, their names are joined.
    std::optional<std::string> focused;
    /// The names in the list's viewport, from the top down.
    std::vector<std::string> rows;
    /// The opacity of the focus bar in each of these rows, 0 to 255.
    std::vector<int> bars;
    /// True if the focused row is completely within the viewport.
    bool focusedInside = false;
    /// The model's selection and number of items when the frame was drawn.
    std::string selected;
    size_t items = 0;
};
std::ostream& operator<<(std::ostream& out, const Frame& frame);

/// The list without a display, with the real renderer, key control, model and theme and the port's
/// keyboard. Records a Frame each time the canvas has drawn.
class SceneTest : public testing::Test {
public:
    ~SceneTest() override;
    SceneTest(const SceneTest&) = delete;
    SceneTest& operator=(const SceneTest&) = delete;

protected:
    /// theme is the name of a compiled theme.
    explicit SceneTest(const std::string& theme = "applist.edj");

    /// Creates items "Row 1" to "Row count"; the scene owns them.
    std::vector<AppListItem*> Make(int count);
    /// Fills the list with rows "Row 1" to "Row count" and waits for the first frame with rows.
    void Fill(int count);
    void Add(AppListItem* item) { m_model->AddItemAtEnd(item); }
    /// Loads another compiled theme, as the port does when the viewer changes a setting.
    void SwitchTheme(const std::string& theme);
    /// Presses and releases a key and waits until all its effects are drawn.
    void Type(const std::string& key);
    /// Presses and releases a key without waiting.
    static void Send(const std::string& key);
    /// Processes pending events and draws the result.
    void Draw();

    DefaultAppListModel& model() { return *m_model; }
    std::string Selected() { return m_model->GetSelection()->GetVisibleName(); }
    Evas_Object* list() const { return m_renderer->List(); }
    Evas_Object* window() const { return m_renderer->Window(); }
    /// The frames drawn since the last Forget().
    const std::vector<Frame>& frames() const { return m_frames; }
    void Forget() { m_frames.clear(); }
    Frame Now();
    /// The name of the row that has the toolkit's focus, empty if no row has it.
    std::string FocusedRow() const;

private:
    class Renderer : public DefaultAppListRenderer {
    public:
        using DefaultAppListRenderer::DefaultAppListRenderer;
        Evas_Object* List() const { return m_genlist; }
        Evas_Object* Window() const { return m_window; }
    };
    static void OnRendered(void* scene, Evas* canvas, void* info);

    std::string m_theme;
    HeadlessToolkit m_toolkit;
    desktop::Windows m_windows{{[](bool) {}, [] {}}};
    desktop::ListSteps m_steps{m_windows};
    desktop::Keyboard m_keyboard{m_windows};
    desktop::ThemeSignals m_signals;
    std::vector<std::unique_ptr<DefaultAppListItem>> m_items;
    std::unique_ptr<DefaultAppListModel> m_model;
    std::unique_ptr<Renderer> m_renderer;
    std::unique_ptr<DefaultAppListControl> m_control;
    std::vector<Frame> m_frames;
};

}  // namespace applist::test
