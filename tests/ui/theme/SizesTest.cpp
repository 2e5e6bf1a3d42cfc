// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Sizes that a viewer at a distance of three metres needs, on each supported screen.
#include <Edje.h>
#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>

#include "ui/theme/ThemedList.h"

namespace applist::test {
namespace {

constexpr double DRAWN_FOR = 1080.0;
constexpr const char* LONG_NAME = "A name that is far too long to fit into one row of the list";

struct Screen {
    Variant variant;
    int height;
};

/// The height of a text part's letters on the screen, in pixels.
double LetterSize(const Evas_Object* object, const char* part) {
    const Evas_Object* text = edje_object_part_object_get(object, part);
    int size = 0;
    evas_object_text_font_get(text, nullptr, &size);
    return size * evas_object_scale_get(text);
}

/// Scaling changes a colour by a step of 255 in places.
bool AreAlike(uint32_t one, uint32_t other) {
    for (const int shift : {0, 8, 16, 24}) {
        const auto channel = [&](uint32_t colour) {
            return static_cast<int>(colour >> shift & 255);
        };
        if (std::abs(channel(one) - channel(other)) > 1) {
            return false;
        }
    }
    return true;
}

class Sizes : public testing::TestWithParam<Screen> {
protected:
    Sizes() { list.Show({"First", "Second", LONG_NAME, "Fourth"}); }
    double Scale() const { return GetParam().height / DRAWN_FOR; }
    Box Screen() const { return {0, 0, GetParam().height * 16 / 9, GetParam().height}; }

    ThemedList list{{GetParam().variant, GetParam().height}};
};

TEST_P(Sizes, AreLegibleFromTheSofa) {
    EXPECT_GE(LetterSize(list.popup(), "elm.text.title"), 36 * Scale());
    for (const Evas_Object* row : list.rows()) {
        EXPECT_GE(LetterSize(row, "name"), 28 * Scale());
        EXPECT_GE(BoxOf(row).height, std::floor(64 * Scale()));
    }
}

TEST_P(Sizes, KeepTheEdgesOfTheScreenFree) {
    const int x = Screen().width / 20;
    const int y = Screen().height / 20;
    const Box safe{x, y, Screen().width - 2 * x, Screen().height - 2 * y};
    EXPECT_TRUE(safe.Contains(BoxOf(list.panel()))) << BoxOf(list.panel());
    EXPECT_EQ(Draw(list.window()).Painted(), BoxOf(list.panel()));
}

TEST_P(Sizes, CutNothing) {
    EXPECT_TRUE(BoxOf(list.panel()).Contains(BoxOf(list.list())));
    EXPECT_TRUE(BoxOf(list.panel()).Contains(TextBoxOf(list.popup(), "elm.text.title")));
    for (const Evas_Object* row : list.rows()) {
        EXPECT_TRUE(BoxOf(list.list(), "elm.swallow.content").Contains(BoxOf(row))) << BoxOf(row);
        EXPECT_TRUE(BoxOf(row, "room").Contains(TextBoxOf(row, "name"))) << TextBoxOf(row, "name");
    }
}

TEST_P(Sizes, KeepTheProportionsOfAScreen1080High) {
    const auto expected = [this](const Box& box) {
        // Only the sizes are scaled; the tests do not compare positions.
        return Box{box.x, box.y, static_cast<int>(std::lround(box.width / Scale())),
                   static_cast<int>(std::lround(box.height / Scale()))};
    };
    // One pixel on the smallest screen is 1.5 pixels at this size.
    constexpr int ROUNDING = 3;
    const Box panel = expected(BoxOf(list.panel()));
    EXPECT_NEAR(panel.width, 816, ROUNDING);
    EXPECT_NEAR(panel.height, GetParam().variant == Variant::STANDARD ? 730 : 738, ROUNDING);
    for (const Evas_Object* row : list.rows()) {
        EXPECT_NEAR(expected(BoxOf(row)).height, 68, ROUNDING);
        EXPECT_NEAR(expected(BoxOf(row)).width, 760, ROUNDING);
    }
}

TEST_P(Sizes, HoldEightRowsWithoutAScrollBar) {
    list.Show(NumberedRows(8), 7);
    EXPECT_EQ(StateOf(list.list(), "bar"), "default");
    EXPECT_TRUE(BoxOf(list.list(), "elm.swallow.content").Contains(BoxOf(list.row("Row 1"))));
    EXPECT_TRUE(BoxOf(list.list(), "elm.swallow.content").Contains(BoxOf(list.row("Row 8"))));
}

// The pieces of an image, edges and middle, must meet without a visible seam.
TEST_P(Sizes, LeaveNoSeamInTheFocusBarNorInThePanel) {
    const Picture picture = Draw(list.window());
    const auto isEven = [&](int x, int y, int right, int bottom) {
        const Picture part = picture.Cut({x, y, right - x, bottom - y});
        return std::all_of(part.pixels.begin(), part.pixels.end(),
                           [&](uint32_t pixel) { return AreAlike(pixel, part.pixels.front()); });
    };
    const auto length = [this](int pixels) {
        return static_cast<int>(std::ceil(pixels * Scale()));
    };

    const Box bar = BoxOf(list.row("First"), "bar");
    const int corner = length(14);
    EXPECT_TRUE(isEven(bar.CentreX(), bar.y, bar.Right() - corner, bar.Bottom()));
    EXPECT_TRUE(isEven(bar.CentreX(), bar.y + corner, bar.Right(), bar.Bottom() - corner));

    const Box panel = BoxOf(list.panel());
    const int below = BoxOf(list.row("Fourth")).Bottom();
    const int edge = length(8);
    const int round = length(26);
    EXPECT_TRUE(isEven(panel.x + edge, below, panel.Right() - edge, panel.Bottom() - round));
    EXPECT_TRUE(isEven(panel.x + round, below, panel.Right() - round, panel.Bottom() - edge));
}

TEST_P(Sizes, PutThePanelInTheMiddle) {
    const Box panel = BoxOf(list.panel());
    EXPECT_NEAR(panel.x, Screen().width - panel.Right(), 1);
    EXPECT_NEAR(panel.y, Screen().height - panel.Bottom(), 1);
}

INSTANTIATE_TEST_SUITE_P(
    Screens, Sizes,
    testing::Values(Screen{Variant::STANDARD, 720}, Screen{Variant::STANDARD, 1080},
                    Screen{Variant::STANDARD, 2160}, Screen{Variant::HIGH_CONTRAST, 720},
                    Screen{Variant::HIGH_CONTRAST, 1080}, Screen{Variant::HIGH_CONTRAST, 2160}),
    [](const auto& state) {
        return std::string(state.param.variant == Variant::STANDARD ? "Standard" : "HighContrast") +
               std::to_string(state.param.height);
    });

}  // namespace
}  // namespace applist::test
