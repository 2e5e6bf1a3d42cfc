// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Sizes that a viewer at a distance of three metres needs, on each supported screen.
#include <Edje.h>
#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>

#include "support/AccessibilityPage.h"
#include "ui/theme/ThemedList.h"

namespace applist::test {
namespace {

constexpr double DRAWN_FOR = 1080.0;
constexpr const char* LONG_NAME = "A name that is far too long to fit into one row of the list";

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

std::string NameOf(const Look& look) {
    return std::string(look.variant == Variant::STANDARD ? "Standard" : "HighContrast") +
           std::to_string(look.Width()) + "x" + std::to_string(look.height) + "Text" +
           std::to_string(look.textSize);
}

constexpr double ASPECT_OF_720X576 = 720.0 / 576;

/// Every text size, in both variants, on screens 576, 720, 1080 and 2160 pixels high.
std::vector<Look> EveryLook() {
    std::vector<Look> looks;
    for (const Variant variant : {Variant::STANDARD, Variant::HIGH_CONTRAST}) {
        for (const int textSize : {100, 125, 150, 175}) {
            looks.push_back({variant, 576, false, textSize, ASPECT_OF_720X576});
            for (const int height : {720, 1080, 2160}) {
                looks.push_back({variant, height, false, textSize});
            }
        }
    }
    return looks;
}

/// Without those in between on the screens that round their measures: the looks at 175 %, those at
/// 100 % except on the smallest screen, and those at 125 and 150 % on screens 1080 pixels high.
std::vector<Look> SomeLooks() {
    std::vector<Look> looks = EveryLook();
    std::erase_if(looks, [](const Look& look) {
        const bool between = look.textSize == 125 || look.textSize == 150;
        return (between && look.height != 1080) || (look.textSize == 100 && look.height == 576);
    });
    return looks;
}

bool IsInSafeArea(const Box& box, const Look& look) {
    const int x = look.Width() / 20;
    const int y = look.height / 20;
    return Box{x, y, look.Width() - 2 * x, look.height - 2 * y}.Contains(box);
}

/// What the theme shows at a text size, on a screen 1080 pixels high.
struct Measures {
    int rows;
    int rowHeight;
    int panelWidth;
    int panelHeight;
};
Measures MeasuresOf(const Look& look) {
    const bool standard = look.variant == Variant::STANDARD;
    switch (look.textSize) {
        case 125:
            return {7, 86, 960, standard ? 824 : 834};
        case 150:
            return {6, 106, 1080, standard ? 893 : 904};
        case 175:
            return {5, 130, 1200, standard ? 945 : 962};
        default:
            return {8, 68, 816, standard ? 738 : 746};
    }
}

class Sizes : public testing::TestWithParam<Look> {
protected:
    Sizes() { list.Show({"First", "Second", LONG_NAME, "Fourth"}); }
    double Scale() const { return GetParam().height / DRAWN_FOR; }
    Measures Expected() const { return MeasuresOf(GetParam()); }
    int Scaled(int pixels) const { return static_cast<int>(std::ceil(pixels * Scale())); }
    void ExpectEven(int x, int y, int right, int bottom) {
        const Picture part = Draw(list.window()).Cut({x, y, right - x, bottom - y});
        EXPECT_TRUE(std::all_of(part.pixels.begin(), part.pixels.end(), [&](uint32_t pixel) {
            return AreAlike(pixel, part.pixels.front());
        }));
    }
    void ExpectNoSeamInTheFocusBar() {
        const Box bar = BoxOf(list.row("First"), "bar");
        const int corner = Scaled(14);
        ExpectEven(bar.CentreX(), bar.y, bar.Right() - corner, bar.Bottom());
        ExpectEven(bar.CentreX(), bar.y + corner, bar.Right(), bar.Bottom() - corner);
    }
    void ExpectNoSeamInThePanel() {
        const Box panel = BoxOf(list.panel());
        const int below = BoxOf(list.row("Fourth")).Bottom();
        const int edge = Scaled(8);
        const int round = Scaled(26);
        ExpectEven(panel.x + edge, below, panel.Right() - edge, panel.Bottom() - round);
        ExpectEven(panel.x + round, below, panel.Right() - round, panel.Bottom() - edge);
    }

    ThemedList list{GetParam()};
};

TEST_P(Sizes, AreLegibleAndKeepTheProportionsOfAScreen1080High) {
    // Only the sizes are scaled; the tests do not compare positions.
    const auto unscaled = [this](int length) {
        return static_cast<int>(std::lround(length / Scale()));
    };
    // One pixel on the smallest screen is 1.5 pixels at this size.
    constexpr int ROUNDING = 3;
    const Box panel = BoxOf(list.panel());
    EXPECT_NEAR(unscaled(panel.width), Expected().panelWidth, ROUNDING);
    EXPECT_NEAR(unscaled(panel.height), Expected().panelHeight, 2 * ROUNDING);
    EXPECT_GE(LetterSize(list.popup(), "elm.text.title"), 36 * Scale());
    for (const Evas_Object* row : list.rows()) {
        EXPECT_GE(LetterSize(row, "name"), 28 * Scale());
        EXPECT_GE(BoxOf(row).height, std::floor(64 * Scale()));
        EXPECT_NEAR(unscaled(BoxOf(row).height), Expected().rowHeight, ROUNDING);
        EXPECT_NEAR(unscaled(BoxOf(row).width), Expected().panelWidth - 56, ROUNDING);
    }
}

TEST_P(Sizes, PutThePanelInTheMiddleOfTheSafeAreaAndCutNothing) {
    const Box panel = BoxOf(list.panel());
    EXPECT_TRUE(IsInSafeArea(panel, GetParam())) << panel;
    EXPECT_EQ(Draw(list.window()).Painted(), panel);
    EXPECT_NEAR(panel.x, GetParam().Width() - panel.Right(), 1);
    EXPECT_NEAR(panel.y, GetParam().height - panel.Bottom(), 1);
    EXPECT_TRUE(panel.Contains(BoxOf(list.list())));
    EXPECT_TRUE(panel.Contains(TextBoxOf(list.popup(), "elm.text.title")));
    for (const Evas_Object* row : list.rows()) {
        EXPECT_TRUE(BoxOf(row, "room").Contains(TextBoxOf(row, "name"))) << TextBoxOf(row, "name");
    }
    // The pieces of an image, edges and middle, must meet without a visible seam.
    ExpectNoSeamInTheFocusBar();
    ExpectNoSeamInThePanel();
    const int rows = Expected().rows;
    list.Show(NumberedRows(rows), static_cast<size_t>(rows) - 1);
    EXPECT_EQ(StateOf(list.list(), "bar"), "default");
    for (const Evas_Object* row : list.rows()) {
        EXPECT_TRUE(BoxOf(list.list(), "elm.swallow.content").Contains(BoxOf(row))) << BoxOf(row);
    }
    EXPECT_EQ(list.rows().size(), static_cast<size_t>(rows));
}

INSTANTIATE_TEST_SUITE_P(Screens, Sizes, testing::ValuesIn(SomeLooks()),
                         [](const auto& look) { return NameOf(look.param); });

// The toolkit leaks memory in each start, so each case has only one.
class ThePanel : public testing::TestWithParam<Look> {};

TEST_P(ThePanel, StaysInTheSafeArea) {
    ThemedList list(GetParam());
    EXPECT_TRUE(IsInSafeArea(BoxOf(list.panel()), GetParam())) << BoxOf(list.panel());
}

INSTANTIATE_TEST_SUITE_P(Looks, ThePanel, testing::ValuesIn(EveryLook()),
                         [](const auto& look) { return NameOf(look.param); });

class TheLargestText : public testing::TestWithParam<Look> {};

TEST_P(TheLargestText, ShowsACapitalHOfSevenTenthsOfADegree) {
    ThemedList list(GetParam());
    const double angle = AngleOf(HeightOfCapitalH(list), GetParam().height);
    EXPECT_GE(angle, 0.7);
    EXPECT_LT(angle, 1.0);
}

// The title, the count, the note and a wrapped name may have another size than the rows.
TEST_P(TheLargestText, HasNoSmallerTextInThePopup) {
    ThemedList list(GetParam());
    list.Show({"First", "Second"});
    constexpr int SMALLEST = 54;
    for (const char* part : {"elm.text.title", "applist.count", "applist.note"}) {
        EXPECT_GE(LetterSize(list.popup(), part), SMALLEST * GetParam().height / DRAWN_FOR) << part;
    }
}

INSTANTIATE_TEST_SUITE_P(Screens, TheLargestText, testing::ValuesIn([] {
                             std::vector<Look> looks = EveryLook();
                             std::erase_if(looks,
                                           [](const Look& look) { return look.textSize != 175; });
                             return looks;
                         }()),
                         [](const auto& look) { return NameOf(look.param); });

class ACapitalH : public testing::TestWithParam<Look> {};

TEST_P(ACapitalH, SpansTheStatedAngle) {
    ThemedList list(GetParam());
    const double angle = AngleOf(HeightOfCapitalH(list), GetParam().height);
    const bool standard = GetParam().variant == Variant::STANDARD;
    EXPECT_TRUE(IsStated("5.1.4 capital H at " + std::to_string(GetParam().textSize) + " %" +
                             (standard ? "" : " in high contrast"),
                         angle >= 0.7, WithUnit(angle, 2, "°")));
}

INSTANTIATE_TEST_SUITE_P(TextSizes, ACapitalH, testing::ValuesIn([] {
                             std::vector<Look> looks = SomeLooks();
                             std::erase_if(looks,
                                           [](const Look& look) { return look.height != 1080; });
                             return looks;
                         }()),
                         [](const auto& look) { return NameOf(look.param); });

TEST(TheTextSize, MakesACapitalHTheSamePercentageLarger) {
    ThemedList standard;
    const int before = HeightOfCapitalH(standard);
    int after = 0;
    for (const int size : {125, 150, 175}) {
        SCOPED_TRACE(size);
        ThemedList list({Variant::STANDARD, 1080, false, size});
        after = HeightOfCapitalH(list);
        EXPECT_NEAR(after, before * size / 100.0, 1.5);
    }
    const double percent = 100.0 * after / before;
    EXPECT_TRUE(
        IsStated("11.1.4.4 resize text to 200 %", percent >= 200, WithUnit(percent, 0, " %")));
}

}  // namespace
}  // namespace applist::test
