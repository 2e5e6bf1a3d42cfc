// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <Elementary.h>
#include <cstdlib>

#include "support/AllocationWatch.h"
#include "ui/presentation/RendererFixture.h"

namespace applist::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The toolkit calls of the renderer's constructor, in order.
const std::vector<std::string> THE_WINDOW{
    "elm_config_focus_highlight_animate_set(true)",
    "elm_win_add(null, \"org.vantu.applist\", 1)",
    "elm_win_title_set(window, \"org.vantu.applist\")",
    "elm_win_alpha_set(window, true)",
    "elm_win_prop_focus_skip_set(window, false)",
    "elm_win_focus_highlight_style_set(window, \"invisible\")",
    "elm_win_focus_highlight_enabled_set(window, true)",
    "elm_win_fullscreen_set(window, true)"};
const std::vector<std::string> ITS_BACKGROUND{"elm_bg_add(window)",
                                              "evas_object_color_set(background, 0, 0, 0, 0)",
                                              "evas_object_size_hint_weight_set(background, 1, 1)",
                                              "elm_win_resize_object_add(window, background)",
                                              "evas_object_show(background)",
                                              "elm_config_scale_get()",
                                              "elm_config_scale_get()",
                                              "evas_object_move(window, 0, 0)",
                                              "evas_object_resize(window, 1920, 1080)",
                                              "evas_object_show(window)"};
const std::vector<std::string> THE_POPUP{"elm_popup_add(window)",
                                         "elm_object_style_set(popup, \"default\")",
                                         "edje_object_message_send_to_winset(popup, 220)",
                                         "elm_object_part_text_set(popup, \"title,text\", "
                                         "\"translated(TV_DATA_SERVICE_LIST)\")",
                                         "evas_object_size_hint_weight_set(popup, 1, 1)",
                                         "evas_object_size_hint_align_set(popup, -1, -1)",
                                         "elm_config_scale_get()"};
const std::vector<std::string> THE_LIST{
    "elm_genlist_add(popup)", "elm_object_scroll_item_loop_enabled_set(genlist, true)",
    "evas_object_smart_callback_add(genlist, \"item,focused\")",
    "evas_object_smart_callback_add(genlist, \"realized\")", "evas_object_show(genlist)"};
const std::vector<std::string> THE_TABLE_AROUND_THE_LIST{
    "elm_table_add(popup)",
    "evas_object_rectangle_add(?)",
    "evas_object_size_hint_min_set(rectangle, 450, 637)",
    "evas_object_size_hint_weight_set(rectangle, 1, 1)",
    "evas_object_size_hint_align_set(rectangle, -1, -1)",
    "elm_table_pack(table, rectangle, 0, 0, 1, 1)",
    "evas_object_size_hint_weight_set(genlist, 1, 1)",
    "evas_object_size_hint_align_set(genlist, -1, -1)",
    "elm_table_pack(table, genlist, 0, 0, 1, 1)"};
const std::vector<std::string> THE_POPUPS_CONTENT{
    "evas_object_size_hint_weight_set(table, 0, 1)",
    "evas_object_size_hint_align_set(table, -1, -1)", "evas_object_show(table)",
    "elm_object_part_content_set(popup, null, table)", "evas_object_show(popup)"};
const std::vector<std::string> THE_END{"evas_object_show(popup)", "elm_genlist_item_class_new()"};

class DefaultAppListRendererConstruction : public testing::Test {
protected:
    DefaultAppListRendererConstruction() {
        TheApp() = {};
        ClearLog();
        ToolkitCalls().clear();
    }

    static std::unique_ptr<OpenRenderer> Build() {
        return std::make_unique<OpenRenderer>("org.vantu.applist");
    }

    HeadlessToolkit toolkit{{APPLIST_TEST_THEME}};
    FakeListModel model;
};

TEST_F(DefaultAppListRendererConstruction, BuildsWindowPopupAndGenlistInOrder) {
    elm_config_scale_set(1.5);
    const auto renderer = Build();
    std::vector<std::string> expected;
    for (const auto& calls : {THE_WINDOW, ITS_BACKGROUND, THE_POPUP, THE_LIST,
                              THE_TABLE_AROUND_THE_LIST, THE_POPUPS_CONTENT, THE_END}) {
        expected.insert(expected.end(), calls.begin(), calls.end());
    }
    EXPECT_EQ(ToolkitCalls(), expected);
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(DefaultAppListRendererConstruction, GivesAllRowsOneClass) {
    const auto renderer = Build();
    const Elm_Genlist_Item_Class& rows = *renderer->m_itemClass;
    EXPECT_STREQ(rows.item_style, "1text_left_styleA");
    EXPECT_EQ(rows.func.text_get, &DefaultAppListRenderer::ItemLabelGetFunction);
    EXPECT_EQ(rows.func.content_get, nullptr);
    EXPECT_EQ(rows.func.state_get, nullptr);
    EXPECT_EQ(rows.func.del, nullptr);
}

TEST_F(DefaultAppListRendererConstruction, TakesTheWindowThatThePlatformPrepared) {
    TheApp().preinitializedWindow = elm_win_add(nullptr, "prepared", ELM_WIN_DIALOG_BASIC);
    ToolkitCalls().clear();
    const auto renderer = Build();
    EXPECT_EQ(renderer->m_window, TheApp().preinitializedWindow);
    EXPECT_THAT(TheApp().windowRequests, ElementsAre("org.vantu.applist"));
    EXPECT_THAT(ToolkitCallsOf({"elm_win_add"}), IsEmpty());
    EXPECT_STREQ(elm_win_title_get(renderer->m_window), "org.vantu.applist");
}

TEST_F(DefaultAppListRendererConstruction, ContinuesWithoutAWindow) {
    FailNext("elm_win_add");
    auto renderer = Build();
    EXPECT_EQ(renderer->m_window, nullptr);
    EXPECT_EQ(renderer->m_background, nullptr);
    EXPECT_EQ(renderer->m_genlist, nullptr);
    EXPECT_EQ(renderer->m_itemClass, nullptr);
    EXPECT_THAT(Log(), ElementsAre(Error("create window failed"), Error("add m_window failed")));
    FailNext("elm_win_add");
    EXPECT_FALSE(renderer->Create());

    DefaultAppListItem item("Alpha", "a");
    renderer->SetModel(&model);
    model.Show({&item}, &item);
    model.Select(&item);
    model.Show({}, nullptr);
    HeadlessToolkit::Settle();
    renderer.reset();
    EXPECT_THAT(ToolkitCallsOf({"evas_object_del", "elm_genlist_item_class_free"}), IsEmpty());
}

TEST_F(DefaultAppListRendererConstruction, SucceedsWithAWindow) {
    FailNext("elm_win_add");
    const auto renderer = Build();
    EXPECT_TRUE(renderer->Create());
    EXPECT_NE(renderer->m_window, nullptr);
}

TEST_F(DefaultAppListRendererConstruction, ContinuesWithoutABackground) {
    FailNext("elm_bg_add");
    auto renderer = Build();
    EXPECT_EQ(renderer->m_window, nullptr);
    EXPECT_EQ(renderer->m_genlist, nullptr);
    EXPECT_THAT(Log(), ElementsAre(Error("Creating background failed. Exiting..."),
                                   Error("add m_window failed")));
    EXPECT_THAT(ToolkitCallsOf({"evas_object_show", "elm_popup_add"}), IsEmpty());
}

TEST_F(DefaultAppListRendererConstruction, StaysEmptyWithoutAClassForRows) {
    FailNext("elm_genlist_item_class_new");
    const auto renderer = Build();
    EXPECT_THAT(Log(), ElementsAre(Error("create item class failed")));
    DefaultAppListItem item("Alpha", "a");
    renderer->SetModel(&model);
    model.Show({&item}, &item);
    HeadlessToolkit::Settle();
    EXPECT_EQ(renderer->Rows(), "");
}

TEST_F(DefaultAppListRendererConstruction, ListensToTheModelWithoutFillingTheList) {
    const auto renderer = Build();
    renderer->SetModel(&model);
    EXPECT_THAT(model.history, ElementsAre("AddItemSelectionListener", "AddItemChangeListener"));
    EXPECT_EQ(renderer->Rows(), "");
}

TEST_F(DefaultAppListRendererConstruction, IsDestroyedWindowFirst) {
    auto renderer = Build();
    renderer->SetModel(&model);
    ToolkitCalls().clear();
    model.onCall = [](const std::string& call) { ToolkitCalls().push_back(call); };
    const void* propagator = renderer->m_selectionPropagator;
    const DeletionWatch watch([&propagator](const void* block) {
        if (block == propagator) {
            propagator = nullptr;  // The address may be reused.
            ToolkitCalls().emplace_back("delete propagator");
        }
    });
    renderer.reset();
    EXPECT_THAT(ToolkitCalls(),
                ElementsAre("evas_object_del(window)", "RemoveItemSelectionListener",
                            "RemoveItemChangeListener", "delete propagator",
                            "evas_object_del(background)", "elm_genlist_item_class_free(class)"));
}

TEST_F(DefaultAppListRendererConstruction, IsDestroyedWithoutAModel) {
    Build().reset();
    EXPECT_THAT(model.history, IsEmpty());
}

TEST_F(DefaultAppListRendererConstruction, LabelsOnlyTheTextPart) {
    DefaultAppListItem item("Alpha <b> & more", "a");
    char* label = DefaultAppListRenderer::ItemLabelGetFunction(&item, nullptr, "elm.text");
    EXPECT_STREQ(label, "Alpha <b> & more");
    std::free(label);
    EXPECT_EQ(DefaultAppListRenderer::ItemLabelGetFunction(&item, nullptr, "elm.text.sub"),
              nullptr);
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(DefaultAppListRendererConstruction, LogsALabelRequestWithoutItem) {
    EXPECT_EQ(DefaultAppListRenderer::ItemLabelGetFunction(nullptr, nullptr, "elm.text"), nullptr);
    EXPECT_THAT(Log(), ElementsAre(Error("Item data is NULL")));
}

}  // namespace
}  // namespace applist::test
