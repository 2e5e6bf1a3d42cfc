// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/presentation/RendererFixture.h"

namespace applist::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

const std::vector<std::string> ROW_CALLS = {
    "elm_genlist_item_append",
    "elm_genlist_item_insert_after",
    "elm_genlist_item_insert_before",
    "elm_object_item_del",
    "elm_genlist_clear",
};

std::string Element(const std::string& nameAndId) {
    return "applist element data is: [" + nameAndId + "]";
}

const std::string ALPHA = "name: Alpha, unique id: a";
const std::string BETA = "name: Beta, unique id: b";
const std::string GAMMA = "name: Gamma, unique id: c";

/// The window is not focused, so that no row gains or loses the focus.
class DefaultAppListRendererRows : public RendererTest {
protected:
    void ShowQuietly(const std::vector<AppListItem*>& items) {
        model.Show(items, nullptr);
        HeadlessToolkit::Settle();
        Forget();
    }
};

TEST_F(DefaultAppListRendererRows, AreAppendedToAnEmptyList) {
    model.Show({&a}, nullptr);
    EXPECT_EQ(renderer->Rows(), "a");
    EXPECT_THAT(ToolkitCalls(), ElementsAre("elm_genlist_item_append(class, \"row a\", null, 0)"));
    EXPECT_THAT(model.history, ElementsAre("GetAllItems", "GetSelection"));
    EXPECT_THAT(
        Log(),
        ElementsAre(Debug("Received item modification event"), Debug("Number of items to print: 1"),
                    Debug("Menu item append started. Item that is being to print: [" + ALPHA + "]"),
                    Debug("Menu item append finished"),
                    Debug("Number of items to be removed from list is: 0")));
}

TEST_F(DefaultAppListRendererRows, CarryTheModelsItemsAndShowTheirNames) {
    ShowQuietly({&a, &b});
    EXPECT_EQ(elm_object_item_data_get(renderer->RowOf("b")), &b);
    EXPECT_STREQ(elm_object_item_part_text_get(renderer->RowOf("b"), "elm.text"), "Beta");
}

TEST_F(DefaultAppListRendererRows, OfNewItemsFollowTheirPredecessor) {
    ShowQuietly({&a, &b});
    Elm_Object_Item* const rowA = renderer->RowOf("a");
    Elm_Object_Item* const rowB = renderer->RowOf("b");
    model.Show({&a, &c, &b}, nullptr);
    EXPECT_EQ(renderer->Rows(), "acb");
    EXPECT_EQ(renderer->RowOf("a"), rowA);
    EXPECT_EQ(renderer->RowOf("b"), rowB);
    EXPECT_THAT(ToolkitCallsOf(ROW_CALLS),
                ElementsAre("elm_genlist_item_insert_after(class, \"row c\", null, row a, 0)"));
    EXPECT_THAT(
        Log(),
        ElementsAre(Debug("Received item modification event"), Debug(Element(ALPHA)),
                    Debug(Element(BETA)), Debug("Number of items to print: 3"),
                    Debug("Menu item append started. Item that is being to print: [" + GAMMA + "]"),
                    Debug("Realized Item is: [" + GAMMA + "]"), Debug("Menu item append finished"),
                    Debug("Number of items to be removed from list is: 0")));
}

TEST_F(DefaultAppListRendererRows, OfANewFirstItemComeBeforeTheFirstRow) {
    ShowQuietly({&b});
    model.Show({&a, &b}, nullptr);
    EXPECT_EQ(renderer->Rows(), "ab");
    EXPECT_THAT(ToolkitCallsOf(ROW_CALLS),
                ElementsAre("elm_genlist_item_insert_before(class, \"row a\", null, row b, 0)"));
}

TEST_F(DefaultAppListRendererRows, KeepTheirOrderWhenTheModelsChanges) {
    ShowQuietly({&a, &b});
    model.Show({&b, &a}, nullptr);
    EXPECT_EQ(renderer->Rows(), "ab");
    EXPECT_THAT(ToolkitCalls(), IsEmpty());
}

TEST_F(DefaultAppListRendererRows, OfVanishedItemsAreDeletedInTheOrderOfTheirIds) {
    ShowQuietly({&c, &a, &b});
    model.Show({&b}, nullptr);
    EXPECT_EQ(renderer->Rows(), "b");
    EXPECT_THAT(ToolkitCallsOf(ROW_CALLS),
                ElementsAre("elm_object_item_del(row a)", "elm_object_item_del(row c)"));
    EXPECT_THAT(Log(), ElementsAre(Debug("Received item modification event"), Debug(Element(GAMMA)),
                                   Debug(Element(ALPHA)), Debug(Element(BETA)),
                                   Debug("Number of items to print: 1"),
                                   Debug("Number of items to be removed from list is: 2"),
                                   Debug("Removing item [unique id: a]"),
                                   Debug("Removing item [unique id: c]")));
}

TEST_F(DefaultAppListRendererRows, KeepTheLabelOfAnItemWhoseNameChanged) {
    ShowQuietly({&a});
    DefaultAppListItem renamed("Omega", "a");
    model.Show({&renamed}, nullptr);
    HeadlessToolkit::Settle();
    EXPECT_EQ(elm_object_item_data_get(renderer->RowOf("a")), &a);
    EXPECT_STREQ(elm_object_item_part_text_get(renderer->RowOf("a"), "elm.text"), "Alpha");
    EXPECT_THAT(ToolkitCallsOf(ROW_CALLS), IsEmpty());
}

TEST_F(DefaultAppListRendererRows, AreMadeForEachOfTwoItemsWithOneId) {
    DefaultAppListItem twin("Twin", "a");
    model.Show({&a, &twin}, nullptr);
    EXPECT_EQ(renderer->Rows(), "aa");
    HeadlessToolkit::Settle();
    Forget();
    model.Select(&a);
    EXPECT_EQ(elm_object_item_data_get(renderer->m_focusItem), &twin) << "the last match counts";
}

TEST_F(DefaultAppListRendererRows, OfNewItemsFollowTheLastOfTwoRowsWithOneId) {
    DefaultAppListItem twin("Twin", "a");
    ShowQuietly({&a, &twin});
    model.Show({&a, &c}, nullptr);
    EXPECT_EQ(renderer->Rows(), "aac");
}

TEST_F(DefaultAppListRendererRows, AreAllDeletedWhenTheModelIsEmptied) {
    ShowQuietly({&a, &b});
    model.Select(&b);
    Elm_Object_Item* const target = renderer->m_focusItem;
    ASSERT_NE(target, nullptr);
    Forget();
    model.Show({}, nullptr);
    EXPECT_EQ(renderer->Rows(), "");
    EXPECT_EQ(renderer->m_focusItem, target);
    EXPECT_THAT(ToolkitCalls(), ElementsAre("elm_genlist_clear(genlist)"));
    EXPECT_THAT(Log(),
                ElementsAre(Debug("Received item modification event"), Debug("Clearing applist")));
    ClearLog();
    model.Select(&b);
    EXPECT_EQ(renderer->m_focusItem, nullptr);
    EXPECT_THAT(Log(), ElementsAre(Debug("Received item selection event")));
}

TEST_F(DefaultAppListRendererRows, AreReportedWhenTheyBecomeReal) {
    model.Show({&a}, nullptr);
    ClearLog();
    ASSERT_TRUE(HeadlessToolkit::RunUntil([] { return !Log().empty(); }));
    EXPECT_EQ(Log().front(), Debug("Realized Item is: [" + ALPHA + "]"));
}

TEST_F(DefaultAppListRendererRows, ReportTheirActivationToTheModelAndEndTheApplication) {
    TheApp() = {};
    ShowFocused({&a, &b}, &b);
    model.onCall = Note;
    HeadlessToolkit::PressKey("Return");
    EXPECT_THAT(Log(), ElementsAre(Debug("select item callback: item: [" + BETA + "]"),
                                   Event("SetClicked(b)"), Debug("Exit efl main loop"),
                                   Event("ui_app_exit")));
}

TEST_F(DefaultAppListRendererRows, ReportedAsNullAreLoggedAndIgnored) {
    OpenRenderer* self = renderer.get();
    TheApp() = {};
    DefaultAppListRenderer::OnFocus(self, nullptr, nullptr);
    DefaultAppListRenderer::OnRealized(self, nullptr, nullptr);
    DefaultAppListRenderer::ItemSelectEvent(self, nullptr, nullptr);
    EXPECT_THAT(Log(), ElementsAre(Error("Focused item is NULL"), Error("Realized item is NULL"),
                                   Error("Selected item is NULL")));
    EXPECT_THAT(model.history, IsEmpty());
    EXPECT_EQ(TheApp().exits, 0);
}

TEST_F(DefaultAppListRendererRows, WithoutAnItemAreLoggedAndIgnored) {
    OpenRenderer* self = renderer.get();
    TheApp() = {};
    Elm_Object_Item* row = elm_genlist_item_append(self->m_genlist, self->m_itemClass, &a, nullptr,
                                                   ELM_GENLIST_ITEM_NONE, nullptr, nullptr);
    elm_object_item_data_set(row, nullptr);
    DefaultAppListRenderer::OnFocus(self, nullptr, row);
    DefaultAppListRenderer::OnRealized(self, nullptr, row);
    DefaultAppListRenderer::ItemSelectEvent(self, nullptr, row);
    EXPECT_THAT(Log(), ElementsAre(Error("Data of focused item is NULL"),
                                   Error("Data of realized item is NULL"),
                                   Error("Data of selected item is NULL")));
    EXPECT_THAT(model.history, IsEmpty());
    EXPECT_EQ(TheApp().exits, 0);
}

TEST_F(DefaultAppListRendererRows, FollowTheModelOfTheRendererWhateverModelAListenerIsGiven) {
    model.items = {&a};
    renderer->ItemChanged(nullptr);
    EXPECT_EQ(renderer->Rows(), "a");
    model.history.clear();
    renderer->ItemSelected(nullptr);
    EXPECT_THAT(model.history, ElementsAre("GetSelection"));
}

TEST_F(DefaultAppListRendererRows, CanBeSeen) {
    ShowFocused({&a, &b, &c}, &b);
    Evas_Object* window = renderer->m_window;
    EXPECT_TRUE(HeadlessToolkit::RunUntil([window] { return Draw(window).Painted() != Box{}; }));
}

}  // namespace
}  // namespace applist::test
