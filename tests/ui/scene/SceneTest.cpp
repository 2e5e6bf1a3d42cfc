// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/scene/SceneTest.h"

#include <Edje.h>

#include "display/Theme.h"
#include "list/ListFocus.h"
#include "support/Scene.h"
#include "toolkit-internals/ToolkitFiles.h"

namespace applist::test {
namespace {

// Returns the name that was passed to the theme. The theme may draw it in a part of another name.
std::string NameOn(const Evas_Object* row) {
    const char* name = edje_object_part_text_get(row, "elm.text");
    return name != nullptr ? name : "";
}

bool HasFocusMark(const Evas_Object* row) {
    return StateOf(row, "marker") == "focused" && StateOf(row, "bar") == "focused";
}

int OpacityOf(const Evas_Object* row, const char* part) {
    int alpha = 0;
    evas_object_color_get(edje_object_part_object_get(row, part), nullptr, nullptr, nullptr,
                          &alpha);
    return alpha;
}

std::filesystem::path Theme(const std::string& name) {
    return BuiltProgram("../share/applist/theme/" + name);
}

// Returns the theme, which takes the place of the toolkit's default theme, as in the program.
std::string AsDefault(const std::string& theme) {
    desktop::ReplaceDefaultTheme(theme);
    return theme;
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const Frame& frame) {
    out << "focused " << frame.focused.value_or("none") << (frame.focusedInside ? "" : " (cut)")
        << ", selected " << frame.selected << ", rows";
    for (const std::string& row : frame.rows) {
        out << ' ' << row;
    }
    out << ", bars";
    for (const int bar : frame.bars) {
        out << ' ' << bar;
    }
    return out;
}

SceneTest::SceneTest(const std::string& theme) : m_theme(AsDefault(Theme(theme))) {
    desktop::LoadTheme(m_theme);
    m_model = std::make_unique<DefaultAppListModel>();
    m_renderer = std::make_unique<Renderer>("org.vantu.applist");
    m_control = std::make_unique<DefaultAppListControl>();
    m_renderer->SetModel(m_model.get());
    m_control->SetModel(m_model.get());
    evas_event_callback_add(evas_object_evas_get(window()), EVAS_CALLBACK_RENDER_POST, OnRendered,
                            this);
    HeadlessToolkit::GiveFocus(window());
    Forget();
}

SceneTest::~SceneTest() {
    evas_event_callback_del_full(evas_object_evas_get(window()), EVAS_CALLBACK_RENDER_POST,
                                 OnRendered, this);
    m_renderer.reset();
    m_control.reset();
}

void SceneTest::SwitchTheme(const std::string& theme) {
    elm_theme_overlay_del(nullptr, m_theme.c_str());
    m_theme = Theme(theme);
    desktop::LoadTheme(m_theme);
    desktop::ListFocus::ThemeSwitched();
    Draw();
}

std::vector<AppListItem*> SceneTest::Make(int count) {
    std::vector<AppListItem*> items;
    for (int row = 1; row <= count; ++row) {
        m_items.push_back(std::make_unique<DefaultAppListItem>("Row " + std::to_string(row),
                                                               "id" + std::to_string(row)));
        items.push_back(m_items.back().get());
    }
    return items;
}

void SceneTest::Fill(int count) {
    m_model->AddItems(Make(count));
    ASSERT_TRUE(HeadlessToolkit::RunUntil([this] { return !Now().rows.empty(); }));
    Draw();
}

void SceneTest::Type(const std::string& key) {
    HeadlessToolkit::PressKey(key);
    HeadlessToolkit::ReleaseKey(key);
}

void SceneTest::Send(const std::string& key) {
    HeadlessToolkit::QueueKey(key, true);
    HeadlessToolkit::QueueKey(key, false);
}

void SceneTest::Draw() {
    HeadlessToolkit::Settle();
}

Frame SceneTest::Now() {
    Frame frame;
    const Box view = BoxOf(ObjectsOf(window(), LIST_GROUP).at(0), "elm.swallow.content");
    for (const Evas_Object* row : ObjectsOf(window(), ROW_GROUP)) {
        const Box box = BoxOf(row);
        if (box.Bottom() <= view.y || box.y >= view.Bottom()) {
            continue;
        }
        frame.rows.push_back(NameOn(row));
        frame.bars.push_back(OpacityOf(row, "bar"));
        if (HasFocusMark(row)) {
            frame.focused = frame.focused.value_or("") + NameOn(row);
            frame.focusedInside = view.Contains(box);
        }
    }
    frame.selected = Selected();
    frame.items = m_model->GetAllItems().size();
    return frame;
}

std::string SceneTest::FocusedRow() const {
    const Elm_Object_Item* row = elm_object_focused_item_get(list());
    return row != nullptr
               ? static_cast<AppListItem*>(elm_object_item_data_get(row))->GetVisibleName()
               : "";
}

void SceneTest::OnRendered(void* scene, Evas* /*canvas*/, void* /*info*/) {
    auto& self = *static_cast<SceneTest*>(scene);
    self.m_frames.push_back(self.Now());
}

}  // namespace applist::test
