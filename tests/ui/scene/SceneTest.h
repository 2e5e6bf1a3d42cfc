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
#include "display/Keyboard.h"
#include "display/ThemeSignals.h"
#include "display/Windows.h"
#include "support/HeadlessToolkit.h"

namespace applist::test {

/// What one frame shows of the rows.
struct Frame {
    /// The row with the focus mark; nothing where none has it. With several, the frame is wrong:
    /// their names follow each other.
    std::optional<std::string> focused;
    /// The names in the list's viewport, from the top down.
    std::vector<std::string> rows;
    /// How much is seen of the focus bar of each of them, out of 255.
    std::vector<int> bars;
    /// True iff the focused row lies within the viewport from its top to its bottom.
    bool focusedInside = false;
    /// What the model had selected and listed when the frame was drawn.
    std::string selected;
    size_t items = 0;
};
std::ostream& operator<<(std::ostream& out, const Frame& frame);

/// The list as a viewer has it, without a display: renderer, key control and model, the port's
/// keys, the real theme. Every frame that is drawn is looked at in the moment it is finished.
class SceneTest : public testing::Test {
public:
    ~SceneTest() override;
    SceneTest(const SceneTest&) = delete;
    SceneTest& operator=(const SceneTest&) = delete;
    SceneTest(SceneTest&&) = delete;
    SceneTest& operator=(SceneTest&&) = delete;

protected:
    SceneTest();

    /// Items "Row 1" to "Row count", which live as long as the scene.
    std::vector<AppListItem*> Make(int count);
    /// Fills the list with rows "Row 1" to "Row count" and waits for the first frame with rows.
    void Fill(int count);
    void Add(AppListItem* item) { m_model->AddItemAtEnd(item); }
    /// A key goes down and up, and everything that follows from it is drawn.
    void Type(const std::string& key);
    /// A key goes down and up; nothing is waited for.
    static void Send(const std::string& key);
    /// Draws what is due now.
    void Draw();

    DefaultAppListModel& model() { return *m_model; }
    std::string Selected() { return m_model->GetSelection()->GetVisibleName(); }
    Evas_Object* list() const { return m_renderer->List(); }
    Evas_Object* window() const { return m_renderer->Window(); }
    /// The frames drawn since the last Forget().
    const std::vector<Frame>& frames() const { return m_frames; }
    void Forget() { m_frames.clear(); }
    Frame Now();
    /// The name of the row that has the toolkit's focus, empty where none has.
    std::string FocusedRow() const;

private:
    class Renderer : public DefaultAppListRenderer {
    public:
        using DefaultAppListRenderer::DefaultAppListRenderer;
        Evas_Object* List() const { return m_genlist; }
        Evas_Object* Window() const { return m_window; }
    };
    static void OnRendered(void* scene, Evas* canvas, void* info);

    HeadlessToolkit m_toolkit;
    desktop::Windows m_windows{{[](bool) {}, [] {}}};
    desktop::Keyboard m_keyboard{m_windows};
    desktop::ThemeSignals m_signals;
    std::vector<std::unique_ptr<DefaultAppListItem>> m_items;
    std::unique_ptr<DefaultAppListModel> m_model;
    std::unique_ptr<Renderer> m_renderer;
    std::unique_ptr<DefaultAppListControl> m_control;
    std::vector<Frame> m_frames;
};

}  // namespace applist::test
