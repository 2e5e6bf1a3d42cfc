// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Names from the broadcast may contain any text, such as markup. They must be shown literally.
#include <Edje.h>

#include <gtest/gtest.h>

#include "toolkit-internals/ShownText.h"
#include "ui/theme/ThemedList.h"

namespace applist::test {
namespace {

const std::string RIGHT_TO_LEFT_OVERRIDE = "\u202E";

Picture PictureOf(const ThemedList& list, const std::string& name) {
    return Draw(list.window()).Cut(BoxOf(list.row(name)));
}

class AHostileName : public testing::TestWithParam<const char*> {};

// Expects each text on a single line. Errors that the toolkit logs also fail the test.
TEST_P(AHostileName, IsShownLetterByLetterInOneLine) {
    ThemedList list;
    list.Show({"Plain", GetParam(), "Last"}, 2);
    const Evas_Object* row = list.row(GetParam());
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(TextOf(row, "name"), desktop::ShownText(GetParam()));
    EXPECT_EQ(BoxOf(row).height, BoxOf(list.row("Plain")).height);
    EXPECT_EQ(TextBoxOf(row, "name").height, TextBoxOf(list.row("Plain"), "name").height);
    list.Focus(1);
    EXPECT_EQ(TextBoxOf(list.row(GetParam()), "name").height,
              TextBoxOf(list.row("Plain"), "name").height);
}

INSTANTIATE_TEST_SUITE_P(Names, AHostileName,
                         testing::Values("<b>Bold</b>", "<br/>x<ps/>y", "Bread & butter", "&amp;",
                                         "&lt;b&gt;", "&#65; &nosuch; &", "<unclosed", "a>b<c",
                                         "<color=#000>Dark</color>", "Line\nbreak", "Two\r\nlines",
                                         "Tab\there", "Bell\a and escape\x1b[31m", "\x7f\x01",
                                         "Line\u2028and paragraph\u2029separators", "%s%n",
                                         "\u202E\u202D\u2066\u2067\u2068\u2069\u202C", "\xFF\xFE"));

TEST(AName, IsNotDecoded) {
    ThemedList list;
    list.Show({"Tom &amp; Jerry", "Tom & Jerry"});
    list.Focus(1);
    EXPECT_GT(TextBoxOf(list.row("Tom &amp; Jerry"), "name").width,
              TextBoxOf(list.row("Tom & Jerry"), "name").width + 50);
}

TEST(AName, ShowsWhereALineBreakWas) {
    ThemedList list;
    list.Show({"AB", "A\nB", "Last"}, 2);
    EXPECT_GT(TextBoxOf(list.row("A\nB"), "name").width, TextBoxOf(list.row("AB"), "name").width);
}

TEST(AName, ReordersNeitherItsNeighboursNorTheTitle) {
    ThemedList list;
    list.Show({"Before", "Between", "After"}, 0);
    const Picture plain = Draw(list.window());
    list.Clear();
    list.Show({"Before", RIGHT_TO_LEFT_OVERRIDE + "Between", "After"}, 0);
    const Picture overridden = Draw(list.window());
    for (const char* name : {"Before", "After"}) {
        const Box row = BoxOf(list.row(name));
        EXPECT_EQ(overridden.Cut(row).pixels, plain.Cut(row).pixels) << name;
    }
    const Box title = TextBoxOf(list.popup(), "elm.text.title");
    EXPECT_EQ(overridden.Cut(title).pixels, plain.Cut(title).pixels);
}

class AScript : public testing::TestWithParam<const char*> {};

// A letter missing from all fonts is drawn as the replacement character.
TEST_P(AScript, HasAFont) {
    const std::string name = GetParam();
    std::string replaced;
    for (const char byte : name) {
        const bool startsLetter = (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
        replaced += startsLetter ? "\uFFFD" : "";
    }
    ThemedList list;
    list.Show({name, replaced, "Last"}, 2);
    EXPECT_NE(PictureOf(list, name).pixels, PictureOf(list, replaced).pixels);
    const Picture blank = PictureOf(list, "Last");
    EXPECT_NE(PictureOf(list, name).pixels, blank.pixels);
    EXPECT_LT(TextBoxOf(list.row(name), "name").width,
              TextBoxOf(list.row(replaced), "name").width * 3 / 2);
}

INSTANTIATE_TEST_SUITE_P(Names, AScript,
                         testing::Values("العربية", "עברית", "हिन्दी", "ภาษาไทย", "中文", "日本語",
                                         "한국어", "Ελληνικά", "Русский", "😀📺"));

TEST(ARightToLeftName, IsAlignedToTheRight) {
    ThemedList list;
    list.Show({"Latin", "אבג", "العربية", "123"}, 0);
    for (const char* name : {"אבג", "العربية"}) {
        const Evas_Object* row = list.row(name);
        EXPECT_NEAR(TextBoxOf(row, "name").Right(), BoxOf(row, "room").Right(), 2) << name;
    }
    for (const char* name : {"Latin", "123"}) {
        const Evas_Object* row = list.row(name);
        EXPECT_NEAR(TextBoxOf(row, "name").x, BoxOf(row, "room").x, 2) << name;
    }
}

class ANameAgainstTheListsDirection : public testing::TestWithParam<bool> {
protected:
    bool mirrored() const { return GetParam(); }
    /// The distance of the name from the side of the row at which reading starts.
    int Inset(const Evas_Object* row) const {
        const Box text = TextBoxOf(row, "name");
        return mirrored() ? text.x - BoxOf(row).x : BoxOf(row).Right() - text.Right();
    }
};

TEST_P(ANameAgainstTheListsDirection, IsInsetLikeTheOthersAndMovesInToItsMarker) {
    const std::string along = mirrored() ? "العربية" : "Latin";
    const std::string against = mirrored() ? "Latin" : "العربية";
    ThemedList list({Variant::STANDARD, 1080, mirrored()});
    list.Show({along, against}, 0);
    EXPECT_NEAR(Inset(list.row(against)), 24, 2);
    list.Focus(1);
    const Evas_Object* row = list.row(against);
    EXPECT_NEAR(Inset(row), 40, 2);
    const Box marker = BoxOf(row, "marker");
    EXPECT_NEAR(mirrored() ? marker.x - BoxOf(row).x : BoxOf(row).Right() - marker.Right(), 14, 1);
    list.Focus(0);
    EXPECT_NEAR(Inset(list.row(against)), 24, 2);
}

INSTANTIATE_TEST_SUITE_P(Directions, ANameAgainstTheListsDirection, testing::Bool());

}  // namespace
}  // namespace applist::test
