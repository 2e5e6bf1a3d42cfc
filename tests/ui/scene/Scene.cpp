// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/scene/Scene.h"

#include <Edje.h>
#include <algorithm>
#include <functional>
#include <set>
#include <string_view>

namespace applist::test {
namespace {

constexpr std::string_view ROW_GROUP = "elm/genlist/item/1text_left_styleA/default";

struct Piece {
    int top = 0;
    int bottom = 0;
};

Piece PieceOf(const Evas_Object* object) {
    int y = 0;
    int height = 0;
    evas_object_geometry_get(object, nullptr, &y, nullptr, &height);
    return {y, y + height};
}

struct Row {
    Piece piece;
    std::string name;
    bool focused = false;
};

bool IsRow(const Evas_Object* object) {
    const char* type = evas_object_type_get(object);
    if (type == nullptr || std::string_view(type) != "edje") {
        return false;
    }
    const char* group = nullptr;
    edje_object_file_get(object, nullptr, &group);
    return group != nullptr && group == ROW_GROUP;
}

// The toolkit complains when such an object is asked for its members.
bool IsGroup(const Evas_Object* object) {
    static const std::set<std::string_view> plain{"rectangle", "image",   "text",   "textblock",
                                                  "line",      "polygon", "vectors"};
    const char* type = evas_object_type_get(object);
    return type != nullptr && !plain.contains(type);
}

// The name as the theme draws it, whatever it calls the part.
std::string NameOn(const Evas_Object* row) {
    const char* name = edje_object_part_text_get(row, "elm.text");
    return name != nullptr ? name : "";
}

// The marker is there, and most of the bar. A bar that leaves is a faint one.
bool HasFocusMark(const Evas_Object* row) {
    const auto state = [row](const char* part) {
        return std::string_view(edje_object_part_state_get(row, part, nullptr));
    };
    return state("marker") == "focused" &&
           (state("bar") == "arriving" || state("bar") == "focused");
}

// Every row that is drawn at all, wherever the toolkit keeps it.
void CollectRows(Evas_Object* object, const Piece& view, std::vector<Row>& rows) {
    const bool seen = evas_object_visible_get(object) != 0;
    const Piece piece = PieceOf(object);
    if (IsRow(object)) {
        if (seen && piece.bottom > view.top && piece.top < view.bottom) {
            rows.push_back({piece, NameOn(object), HasFocusMark(object)});
        }
        return;
    }
    if (!IsGroup(object)) {
        return;
    }
    Eina_List* members = evas_object_smart_members_get(object);
    for (Eina_List* each = members; each != nullptr; each = eina_list_next(each)) {
        CollectRows(static_cast<Evas_Object*>(eina_list_data_get(each)), view, rows);
    }
    eina_list_free(members);
}

std::vector<Row> RowsOn(const Evas_Object* canvasOwner, const Piece& view) {
    std::vector<Row> rows;
    for (Evas_Object* object = evas_object_bottom_get(evas_object_evas_get(canvasOwner));
         object != nullptr; object = evas_object_above_get(object)) {
        if (evas_object_smart_parent_get(object) == nullptr) {
            CollectRows(object, view, rows);
        }
    }
    std::sort(rows.begin(), rows.end(),
              [](const Row& a, const Row& b) { return a.piece.top < b.piece.top; });
    return rows;
}

std::filesystem::path Theme() {
    return BuiltProgram("../share/applist/theme/applist.edj");
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const Frame& frame) {
    out << "focused " << frame.focused.value_or("none") << (frame.focusedInside ? "" : " (cut)")
        << ", selected " << frame.selected << ", rows";
    for (const std::string& row : frame.rows) {
        out << ' ' << row;
    }
    return out;
}

SceneTest::SceneTest()
    : m_toolkit({Theme()}),
      m_model(std::make_unique<DefaultAppListModel>()),
      m_renderer(std::make_unique<Renderer>("org.vantu.applist")),
      m_control(std::make_unique<DefaultAppListControl>()) {
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

void SceneTest::Fill(int count) {
    std::vector<AppListItem*> items;
    for (int row = 1; row <= count; ++row) {
        m_items.push_back(std::make_unique<DefaultAppListItem>("Row " + std::to_string(row),
                                                               "id" + std::to_string(row)));
        items.push_back(m_items.back().get());
    }
    m_model->AddItems(items);
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
    const Piece view = PieceOf(list());
    for (const Row& row : RowsOn(window(), view)) {
        frame.rows.push_back(row.name);
        if (row.focused) {
            frame.focused = frame.focused.value_or("") + row.name;
            frame.focusedInside = row.piece.top >= view.top && row.piece.bottom <= view.bottom;
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
