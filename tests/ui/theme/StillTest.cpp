// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The list with reduced motion.
#include <Edje.h>

#include <gtest/gtest.h>

#include "support/AccessibilityPage.h"
#include "toolkit-internals/ShownText.h"
#include "ui/theme/ThemedList.h"

namespace applist::test {
namespace {

constexpr const char* WRAPPED = "applist.wrapped";
const std::string LONG = "A name that is far too long to fit into one row of this list";
// Its letters reach far below the line.
const std::string DEEP = "سجل الناخبين وخدمات بلدية مدينة ريدجو إميليا في الشمال الإيطالي";

class AStillList : public testing::TestWithParam<Look> {
protected:
    static int LinesOf(const Evas_Object* row) {
        const Evas_Object* block = edje_object_part_object_get(row, WRAPPED);
        int lines = 0;
        while (evas_object_textblock_line_number_geometry_get(block, lines, nullptr, nullptr,
                                                              nullptr, nullptr) != EINA_FALSE) {
            ++lines;
        }
        return lines;
    }
    static bool IsWrapped(const Evas_Object* row) { return StateOf(row, WRAPPED) == "visible"; }

    ThemedList list{GetParam()};
};

TEST_P(AStillList, WrapsALongNameThatHasTheFocus) {
    list.Show({LONG, "Short"});
    const Evas_Object* row = list.row(LONG);
    EXPECT_TRUE(IsWrapped(row));
    EXPECT_EQ(StateOf(row, "name"), "sliding");
    EXPECT_EQ(LinesOf(row), 2);
    list.Focus(1);
    EXPECT_FALSE(IsWrapped(row));
    EXPECT_EQ(StateOf(row, "name"), "default");
    EXPECT_FALSE(IsWrapped(list.row("Short")));
    EXPECT_EQ(StateOf(list.row("Short"), "name"), "focused");
}

TEST_P(AStillList, KeepsTwoLinesOfAnyNameInTheRow) {
    for (const std::string& part : {LONG, DEEP}) {
        const std::string name = part + " " + part + " " + part;
        list.Show({name, "Short"});
        const Evas_Object* row = list.row(name);
        EXPECT_EQ(LinesOf(row), 2);
        const Box room = BoxOf(row, "room");
        const Picture ground = Draw(list.window()).Cut(room);
        for (const int y : {0, room.height - 1}) {
            for (int x = 0; x < room.width; ++x) {
                EXPECT_LT(Contrast(ground.At(x, y), ground.At(0, 0)), 1.2) << x << ", " << y;
            }
        }
    }
}

TEST_P(AStillList, DrawsNoFrameAtRest) {
    list.Show({LONG, "Short"});
    HeadlessToolkit::Settle();
    const Picture before = Draw(list.window());
    const Frames frames(list.window());
    ThemedList::Pass(1.5);
    EXPECT_EQ(frames.count(), 0);
    EXPECT_TRUE(IsStated("11.2.2.2 pause, stop, hide with reduced motion", frames.count() == 0,
                         WithUnit(frames.count(), 0, " frames at rest")));
    EXPECT_EQ(Draw(list.window()), before);
}

INSTANTIATE_TEST_SUITE_P(TextSizes, AStillList,
                         testing::Values(Look{Variant::STANDARD, 1080, false, 100, 16.0 / 9, true},
                                         Look{Variant::STANDARD, 720, false, 150, 16.0 / 9, true},
                                         Look{Variant::HIGH_CONTRAST, 2160, true, 175, 16.0 / 9,
                                              true}),
                         [](const auto& look) { return "Row" + std::to_string(look.index); });

TEST(AWrappedName, IsShownLiterally) {
    ThemedList list({Variant::STANDARD, 1080, false, 100, 16.0 / 9, true});
    const std::string markup = "<b>Tom &amp; Jerry</b><br/>and a tab\tin a name that is too long";
    list.Show({markup, "Short"});
    const std::string shown = desktop::ShownText(markup.c_str());
    const Evas_Object* row = list.row(markup);
    ASSERT_NE(row, nullptr);
    char* text =
        evas_textblock_text_markup_to_utf8(nullptr, edje_object_part_text_get(row, WRAPPED));
    EXPECT_EQ(std::string(text), shown);
    std::free(text);
}

}  // namespace
}  // namespace applist::test
