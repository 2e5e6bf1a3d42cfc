// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Names that are too long for their rows.
#include <Edje.h>

#include <gtest/gtest.h>

#include "ui/theme/ThemedList.h"

namespace applist::test {
namespace {

const std::string LONG = "A name that is far too long to fit into one row of this list";
const std::string LONG_HEBREW =
    "שם ארוך מאוד של יישום שאינו יכול להיכנס לשורה אחת ברשימה הזאת בשום אופן";
// Sliding starts after one second. The rest is a margin for a busy machine.
constexpr double PATIENCE_SECONDS = 20.0;
// Longer than the delay before sliding starts.
constexpr double LONG_ENOUGH = 1.5;

bool IsVisible(const Evas_Object* row, const char* part) {
    return evas_object_visible_get(edje_object_part_object_get(row, part)) != 0;
}

class ALongName : public testing::Test {
protected:
    ThemedList list;
};

TEST_F(ALongName, SlidesTheOtherWayWhereItIsReadTheOtherWay) {
    list.Show({LONG_HEBREW, "Short"});
    const Evas_Object* row = list.row(LONG_HEBREW);
    ASSERT_TRUE(list.WaitForSlide(PATIENCE_SECONDS));
    EXPECT_LT(BoxOf(row, "slider").x, BoxOf(row, "room").x);
    EXPECT_TRUE(
        HeadlessToolkit::RunUntil([&] { return BoxOf(row, "slider").x == BoxOf(row, "room").x; }));
}

TEST_F(ALongName, FadesOutAtBothEndsOfItsRoomWhileItSlidesAndStopsWhenTheFocusLeaves) {
    list.Show({LONG, "Short"});
    const Evas_Object* row = list.row(LONG);
    EXPECT_FALSE(IsVisible(row, "slider_ends"));
    ASSERT_TRUE(list.WaitForSlide(PATIENCE_SECONDS));
    EXPECT_TRUE(IsVisible(row, "slider_ends"));
    const Box sight = BoxOf(row, "sight");
    const Box room = BoxOf(row, "room");
    EXPECT_EQ(sight.x, room.x - 10);
    EXPECT_EQ(sight.Right(), room.Right() + 10);
    EXPECT_GE(sight.x, BoxOf(row, "marker").Right() + 8);
    // The last column of pixels shows the bar and no letter.
    ASSERT_TRUE(HeadlessToolkit::RunUntil([&] { return BoxOf(row, "slider").x < sight.x - 100; }));
    const Picture picture = Draw(list.window());
    const Box bar = BoxOf(row, "bar");
    for (int y = bar.y + 2; y < bar.Bottom() - 2; ++y) {
        EXPECT_LT(Contrast(picture.At(sight.x, y), picture.At(bar.CentreX(), bar.y + 2)), 1.2);
    }
    list.Focus(1);
    EXPECT_FALSE(IsVisible(row, "slider_ends"));
    EXPECT_EQ(StateOf(row, "name"), "default");
    ThemedList::Pass(LONG_ENOUGH);
    EXPECT_EQ(StateOf(row, "name"), "default");
}

// At a speed of one row height per second, a ninth of this name would take a minute.
TEST_F(ALongName, SlidesFasterTheLongerItIs) {
    std::string name;
    for (int word = 0; word < 300; ++word) {
        name += "Name " + std::to_string(word) + ' ';
    }
    list.Show({name, "Short"});
    const Evas_Object* row = list.row(name);
    const int distance = BoxOf(row, "slider").width - BoxOf(row, "room").width;
    ASSERT_GT(distance, 15000);
    ASSERT_TRUE(list.WaitForSlide(PATIENCE_SECONDS));
    EXPECT_TRUE(HeadlessToolkit::RunUntil(
        [&] { return BoxOf(row, "room").x - BoxOf(row, "slider").x > distance / 9; }));
}

TEST_F(ALongName, RestsAtItsStartAfterItHasSlidTwice) {
    const std::string name = "A name that is barely too long for a row of this";
    list.Show({name, "Short"});
    const Evas_Object* row = list.row(name);
    ASSERT_GT(BoxOf(row, "slider").width, BoxOf(row, "room").width);
    const Picture before = Draw(list.window());
    EXPECT_EQ(StateOf(row, "name"), "focused");
    const Box room = BoxOf(row, "room");
    ASSERT_TRUE(list.WaitForSlide(PATIENCE_SECONDS));
    int ends = 0;
    bool atEnd = false;
    EXPECT_TRUE(HeadlessToolkit::RunUntil([&] {
        const bool now = BoxOf(row, "slider").Right() == room.Right();
        ends += now && !atEnd ? 1 : 0;
        atEnd = now;
        return StateOf(row, "name") == "focused";
    }));
    EXPECT_EQ(ends, 2);
    HeadlessToolkit::Settle();
    EXPECT_EQ(Draw(list.window()), before);
    const Frames frames(list.window());
    ThemedList::Pass(LONG_ENOUGH);
    EXPECT_EQ(frames.count(), 0);
}

// Each step of an animation takes a turn of the loop.
int TurnsWhileNothingHappens() {
    int turns = 0;
    HeadlessToolkit::RunUntil(
        [&turns] {
            ++turns;
            return false;
        },
        std::chrono::milliseconds(static_cast<int>(LONG_ENOUGH * 1000)));
    return turns;
}

// At 60 frames per second there would be 90 of each. Emptying the list and the test itself cause a
// few.
constexpr int FEW = 45;

TEST_F(ALongName, EndsInAnEllipsisAndCostsNothingWhileAShortOneHasTheFocus) {
    list.Show({"Short", LONG});
    HeadlessToolkit::Settle();
    const Evas_Object* row = list.row(LONG);
    EXPECT_GT(BoxOf(row, "slider").width, BoxOf(row, "room").width);
    EXPECT_TRUE(BoxOf(row, "room").Contains(TextBoxOf(row, "name")));
    const Frames frames(list.window());
    EXPECT_LT(TurnsWhileNothingHappens(), FEW);
    EXPECT_LT(frames.count(), FEW);
    EXPECT_EQ(StateOf(row, "name"), "default");
    EXPECT_EQ(StateOf(list.row("Short"), "name"), "focused");
}

TEST_F(ALongName, CostsNothingOnceItsRowIsGone) {
    list.Show({LONG, "Short"});
    ASSERT_TRUE(list.WaitForSlide(PATIENCE_SECONDS));
    list.Clear();
    const Frames frames(list.window());
    EXPECT_LT(TurnsWhileNothingHappens(), FEW);
    EXPECT_LT(frames.count(), FEW);
}

}  // namespace
}  // namespace applist::test
