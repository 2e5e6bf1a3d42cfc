// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Contrast ratios of the themes, computed from the drawn pixels and not from the themes' source.
#include <algorithm>

#include <gtest/gtest.h>

#include "support/AccessibilityPage.h"
#include "ui/theme/ThemedList.h"

namespace applist::test {
namespace {

uint32_t MiddleOf(const Picture& picture, const Box& box) {
    return picture.At(box.x + box.width / 2, box.y + box.height / 2);
}

// The contrast of a text with its background. Only the core of a stroke counts, because the edges
// are blends.
double TextContrast(const Picture& picture, const Box& text, uint32_t ground) {
    double best = 0;
    for (const uint32_t pixel : picture.Cut(text).pixels) {
        best = std::max(best, Contrast(pixel, ground));
    }
    return best;
}

class TheContrast : public testing::TestWithParam<Variant> {
protected:
    TheContrast() {
        list.Show({"First", "Second", "Third"}, 1);
        picture = Draw(list.window());
        panel = picture.At(BoxOf(list.list()).x + 2, BoxOf(list.list()).Bottom() - 2);
    }
    uint32_t Bar() const {
        const Box bar = BoxOf(list.row("Second"), "bar");
        return picture.At(bar.Right() - bar.height / 4, bar.y + bar.height / 2);
    }
    testing::AssertionResult IsOnThePage(const std::string& clause, double contrast,
                                         double required) const {
        const bool standard = GetParam() == Variant::STANDARD;
        return IsStated(clause + (standard ? "" : " in high contrast"), contrast >= required,
                        WithUnit(contrast, 1, ":1"));
    }
    double Enough() const { return GetParam() == Variant::STANDARD ? 7.0 : 15.0; }

    ThemedList list{{GetParam()}};
    Picture picture;
    uint32_t panel = 0;
};

TEST_P(TheContrast, OfTheTextsSuffices) {
    EXPECT_GE(TextContrast(picture, TextBoxOf(list.popup(), "elm.text.title"), panel), Enough());
    const double row = TextContrast(picture, TextBoxOf(list.row("First"), "name"), panel);
    EXPECT_GE(row, Enough());
    EXPECT_TRUE(IsOnThePage("11.1.4.3 contrast of a row", row, 4.5));
    const double focused = TextContrast(picture, TextBoxOf(list.row("Second"), "name"), Bar());
    EXPECT_GE(focused, Enough());
    EXPECT_TRUE(IsOnThePage("11.1.4.3 contrast of the focused row", focused, 4.5));
}

TEST_P(TheContrast, OfTheFocusDoesNotRestOnColour) {
    const Evas_Object* focused = list.row("Second");
    const Evas_Object* other = list.row("First");
    // The focused row differs by the brightness of its bar, by the marker and by the text's
    // position.
    EXPECT_GE(Contrast(Bar(), panel), 7.0);
    EXPECT_TRUE(IsOnThePage("11.1.4.11 contrast of the focus bar", Contrast(Bar(), panel), 3.0));
    EXPECT_GE(Contrast(MiddleOf(picture, BoxOf(focused, "marker")), Bar()), 7.0);
    EXPECT_EQ(MiddleOf(picture, BoxOf(other, "marker")), panel);
    EXPECT_GE(TextBoxOf(focused, "name").x, TextBoxOf(other, "name").x + 12);
}

TEST_P(TheContrast, HoldsOverAnyBroadcast) {
    const Box corner = BoxOf(list.panel());
    EXPECT_EQ(panel >> 24U, 0xFFU);
    EXPECT_EQ(picture.At(corner.x + corner.width / 2, corner.y + 20) >> 24U, 0xFFU);
}

INSTANTIATE_TEST_SUITE_P(Variants, TheContrast,
                         testing::Values(Variant::STANDARD, Variant::HIGH_CONTRAST),
                         [](const auto& state) {
                             return state.param == Variant::STANDARD ? "Standard" : "HighContrast";
                         });

}  // namespace
}  // namespace applist::test
