// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The list's panel around its rows: empty, filled, scrolled, mirrored.
#include <Edje.h>
#include <algorithm>

#include <gtest/gtest.h>

#include "ui/theme/ThemedList.h"

namespace applist::test {
namespace {

constexpr int FITTING = 8;

class TheFrame : public testing::Test {
protected:
    bool HasScrollBar() const { return StateOf(list.list(), "bar") == "visible"; }

    ThemedList list;
};

std::string EmptyText(const ThemedList& list) {
    const char* text = edje_object_part_text_get(list.popup(), "applist.empty");
    return text != nullptr ? text : "";
}

std::string Count(const ThemedList& list) {
    return TextOf(list.popup(), "applist.count");
}

TEST_F(TheFrame, IsACalmPanelBeforeTheListIsFilled) {
    EXPECT_TRUE(list.rows().empty());
    EXPECT_FALSE(HasScrollBar());
    const Picture inside = Draw(list.window()).Cut(BoxOf(list.list()));
    EXPECT_EQ(std::vector<uint32_t>(inside.pixels.size(), inside.pixels[0]), inside.pixels);
}

TEST_F(TheFrame, SaysAfterAMomentThatAnEmptyListWaits) {
    EXPECT_EQ(EmptyText(list), "");
    EXPECT_TRUE(HeadlessToolkit::RunUntil(
        [&] { return EmptyText(list) == "Waiting for the broadcast's services"; }));
    list.Show({"One"});
    EXPECT_EQ(EmptyText(list), "");
}

TEST_F(TheFrame, ShowsThePositionAndTheNumberOfRows) {
    EXPECT_EQ(Count(list), "");
    list.Show(NumberedRows(FITTING), 2);
    EXPECT_EQ(Count(list), "3 / 8");
    list.Focus(7);
    EXPECT_EQ(Count(list), "8 / 8");
    list.Show(NumberedRows(3), 0);
    EXPECT_EQ(Count(list), "1 / 3");
    list.Clear();
    EXPECT_EQ(Count(list), "");
}

TEST_F(TheFrame, IsTheSamePanelAfterTheListWasEmptied) {
    const auto waits = [this] { return !EmptyText(list).empty(); };
    ASSERT_TRUE(HeadlessToolkit::RunUntil(waits));
    const Picture before = Draw(list.window());
    list.Show(NumberedRows(FITTING + 1));
    list.Clear();
    ASSERT_TRUE(HeadlessToolkit::RunUntil(waits));
    HeadlessToolkit::Settle();
    EXPECT_EQ(Draw(list.window()).pixels, before.pixels);
}

TEST_F(TheFrame, NeverChangesItsSizeWhileTheListIsFilled) {
    const Box panel = BoxOf(list.panel());
    HeadlessToolkit::Settle();
    bool still = true;
    Ecore_Animator* watch =
        ecore_animator_add([](void*) -> Eina_Bool { return ECORE_CALLBACK_RENEW; }, nullptr);
    list.Show({"One"});
    still = still && BoxOf(list.panel()) == panel;
    list.Show(NumberedRows(FITTING * 3));
    HeadlessToolkit::RunUntil(
        [&] {
            still = still && Draw(list.window()).Painted() == panel;
            return false;
        },
        std::chrono::milliseconds(200));
    ecore_animator_del(watch);
    EXPECT_TRUE(still);
}

TEST_F(TheFrame, HasAScrollBarBesideRowsThatDoNotFit) {
    list.Show(NumberedRows(FITTING + 1));
    EXPECT_TRUE(HeadlessToolkit::RunUntil([this] { return HasScrollBar(); }));
    HeadlessToolkit::Settle();
    EXPECT_GE(BoxOf(list.list(), "track").x, BoxOf(list.row("Row 1")).Right());
    list.Clear();
    EXPECT_FALSE(HasScrollBar());
}

TEST_F(TheFrame, ShowsPartOfTheRowsBeyondThoseThatFit) {
    const auto drawnBetween = [this](int top, int bottom) {
        const Box area = BoxOf(list.list());
        const auto pixels =
            Draw(list.window()).Cut({area.x, top, area.width - 40, bottom - top}).pixels;
        return std::count_if(pixels.begin(), pixels.end(),
                             [&](uint32_t pixel) { return Contrast(pixel, pixels[0]) > 2; });
    };
    const int bottom = BoxOf(list.panel()).Bottom() - 8;
    list.Show(NumberedRows(FITTING));
    EXPECT_EQ(drawnBetween(BoxOf(list.row("Row 8")).Bottom(), bottom), 0);
    list.Show(NumberedRows(FITTING * 2));
    EXPECT_GT(drawnBetween(BoxOf(list.row("Row 8")).Bottom(), bottom), 50);
    list.Focus(9);
    ASSERT_TRUE(HeadlessToolkit::RunUntil([&] {
        return BoxOf(list.list(), "elm.swallow.content").Contains(BoxOf(list.row("Row 10")));
    }));
    EXPECT_GT(drawnBetween(BoxOf(list.row("Row 10")).Bottom(), bottom), 50);
    const int top = BoxOf(list.row("Row 3")).y;
    EXPECT_GT(drawnBetween(top - 24, top), 20);
}

TEST_F(TheFrame, ShowsTheWholeScrollBarBesideTheClosingNote) {
    list.Show(NumberedRows(FITTING * 2), FITTING * 2 - 1);
    ASSERT_TRUE(HeadlessToolkit::RunUntil([this] { return HasScrollBar(); }));
    HeadlessToolkit::Settle();
    const auto drawnBar = [this] {
        return Draw(list.window()).Cut(BoxOf(list.list(), "track")).pixels;
    };
    const auto before = drawnBar();
    edje_object_signal_emit(list.popup(), "applist,note,visible", "applist");
    HeadlessToolkit::Settle();
    EXPECT_EQ(drawnBar(), before);
}

TEST_F(TheFrame, TakesTheProportionsOfAScreenThatBecomesLower) {
    const Box before = BoxOf(list.panel());
    Apply({Variant::STANDARD, 540});
    evas_object_resize(list.window(), 960, 540);
    HeadlessToolkit::Settle();
    constexpr int ROUNDING = 2;
    EXPECT_NEAR(BoxOf(list.panel()).width, before.width / 2, ROUNDING);
    EXPECT_NEAR(BoxOf(list.panel()).height, before.height / 2, ROUNDING);
}

TEST_F(TheFrame, HoldsTheFocusedRowWhole) {
    list.Show(NumberedRows(20));
    for (const size_t row : {7U, 8U, 19U, 0U, 12U}) {
        list.Focus(row);
        const Evas_Object* focused = list.row("Row " + std::to_string(row + 1));
        EXPECT_TRUE(HeadlessToolkit::RunUntil([&] {
            return BoxOf(list.list(), "elm.swallow.content").Contains(BoxOf(focused));
        })) << BoxOf(focused);
    }
}

TEST_F(TheFrame, DrawsNoFrameOfTheToolkitsAroundTheFocus) {
    list.Show({"One"});
    const auto highlight = ObjectsOf(list.window(), "elm/focus_highlight/top/invisible");
    for (const Evas_Object* object : highlight) {
        EXPECT_FALSE(edje_object_part_exists(object, "base"));
    }
    EXPECT_TRUE(ObjectsOf(list.window(), "elm/focus_highlight/top/default").empty());
}

TEST(AMirroredFrame, BeginsAtTheRight) {
    ThemedList list({Variant::STANDARD, 1080, true});
    list.Show(std::vector<std::string>(FITTING + 1, "العربية"));
    ASSERT_TRUE(
        HeadlessToolkit::RunUntil([&] { return StateOf(list.list(), "bar") == "visible"; }));
    HeadlessToolkit::Settle();
    const Evas_Object* row = list.row("العربية");
    EXPECT_GT(BoxOf(row, "marker").x, BoxOf(row, "room").Right());
    EXPECT_LE(BoxOf(list.list(), "track").Right(), BoxOf(row).x);
}

TEST(ATitle, EndsBeforeTheCount) {
    ThemedList list({Variant::HIGH_CONTRAST, 1080, false, 175});
    edje_object_part_text_set(list.popup(), "elm.text.title",
                              "A title that is far too long for the panel's width");
    list.Show(NumberedRows(12), 11);
    EXPECT_LE(TextBoxOf(list.popup(), "elm.text.title").Right(),
              TextBoxOf(list.popup(), "applist.count").x);
}

// A set whose language has no translation shows English texts in a mirrored panel.
TEST(ATitle, KeepsAwayFromTheCountInAMirroredPanel) {
    ThemedList list({Variant::STANDARD, 1080, true});
    const int start = BoxOf(list.popup(), "rule").x;
    EXPECT_NEAR(TextBoxOf(list.popup(), "elm.text.title").x, start, 1);
    list.Show(NumberedRows(12), 11);
    EXPECT_EQ(TextBoxOf(list.popup(), "applist.count").x, start);
    EXPECT_GE(TextBoxOf(list.popup(), "elm.text.title").x,
              TextBoxOf(list.popup(), "applist.count").Right() + 10);
}

TEST(ATitle, IsAlignedToTheSideWhereItsLanguageStarts) {
    ThemedList list;
    const Box popup = BoxOf(list.popup());
    EXPECT_LT(TextBoxOf(list.popup(), "elm.text.title").x, popup.x + 40);
    edje_object_part_text_set(list.popup(), "elm.text.title", "خدمات البيانات");
    HeadlessToolkit::Settle();
    EXPECT_GT(TextBoxOf(list.popup(), "elm.text.title").Right(), popup.Right() - 40);
}

}  // namespace
}  // namespace applist::test
