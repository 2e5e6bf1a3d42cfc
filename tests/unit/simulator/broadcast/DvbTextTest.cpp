// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <ostream>
#include <string>

#include <gtest/gtest.h>

#include "broadcast/Text.h"

namespace applist::sim {
namespace {

using std::string_literals::operator""s;

std::optional<std::string> Decode(const std::string& text) {
    return DecodeDvbText({reinterpret_cast<const uint8_t*>(text.data()), text.size()});
}

struct TableCase {
    const char* name;
    std::string bytes;
    std::string text;
};

void PrintTo(const TableCase& tableCase, std::ostream* out) {
    *out << tableCase.name;
}

class DvbTextTable : public testing::TestWithParam<TableCase> {};

TEST_P(DvbTextTable, DecodesItsCharacters) {
    EXPECT_EQ(Decode(GetParam().bytes), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(AnnexA, DvbTextTable,
                         testing::Values(TableCase{"Default", "Televideo"s, "Televideo"},
                                         TableCase{"DefaultWithAccents",
                                                   "Citt\xC1"
                                                   "a, perch\xC2"
                                                   "e"s,
                                                   "Citt\u00e0, perch\u00e9"},
                                         TableCase{"DefaultEndingInAnAccent",
                                                   "Novit\xC1"
                                                   "a"s,
                                                   "Novit\u00e0"},
                                         TableCase{"DefaultWithEuro", "\xA4 5"s, "\u20ac 5"},
                                         TableCase{"Cyrillic", "\x01\xBD\xDE\xD2\xDE"s,
                                                   "\u041d\u043e\u0432\u043e"},
                                         TableCase{"Arabic", "\x02\xC7"s, "\u0627"},
                                         TableCase{"Greek", "\x03\xC1\xE2"s, "\u0391\u03b2"},
                                         TableCase{"Hebrew", "\x04\xE0"s, "\u05d0"},
                                         TableCase{"Turkish", "\x05\xDD\xFE"s, "\u0130\u015f"},
                                         TableCase{"Nordic", "\x06\xBF"s, "\u014b"},
                                         TableCase{"Thai", "\x07\xA1"s, "\u0e01"},
                                         TableCase{"Baltic", "\x09\xC0"s, "\u0104"},
                                         TableCase{"Celtic", "\x0A\xA1"s, "\u1e02"},
                                         TableCase{"LatinNine", "\x0B\xA4"s, "\u20ac"},
                                         TableCase{"ByPartOne", "\x10\x00\x01 \xE8"s, " \u00e8"},
                                         TableCase{"ByPartTwo", "\x10\x00\x02\xA3"s, "\u0141"},
                                         TableCase{"ByPartFifteen", "\x10\x00\x0F\xBE"s, "\u0178"},
                                         TableCase{"TwoByte", "\x11\x00M\x04\x14"s, "M\u0414"},
                                         TableCase{"Korean", "\x12\xB0\xA1"s, "\uac00"},
                                         TableCase{"SimplifiedChinese", "\x13\xD6\xD0"s, "\u4e2d"},
                                         TableCase{"TraditionalChinese", "\x14\x4E\x2D"s, "\u4e2d"},
                                         TableCase{"Utf8",
                                                   "\x15"
                                                   "Caff\u00e8"s,
                                                   "Caff\u00e8"}),
                         [](const auto& named) { return named.param.name; });

TEST(DvbText, DecodesNothingToNothing) {
    EXPECT_EQ(Decode(""), "");
    EXPECT_EQ(Decode("\x15"), "");
}

TEST(DvbText, RefusesTablesThatAreReservedOrPrivate) {
    for (const std::string& bytes :
         {"\x00x"s, "\x08x"s, "\x0Cx"s, "\x0Fx"s, "\x16x"s, "\x1Ex"s, "\x1F\x01x"s,
          "\x10\x00\x00x"s, "\x10\x00\x0Cx"s, "\x10\x00\x10x"s, "\x10\x01\x01x"s}) {
        EXPECT_EQ(Decode(bytes), std::nullopt) << static_cast<int>(bytes[0]);
    }
}

TEST(DvbText, RefusesATruncatedTableSelection) {
    EXPECT_EQ(Decode("\x10"s), std::nullopt);
    EXPECT_EQ(Decode("\x10\x00"s), std::nullopt);
}

TEST(DvbText, DropsEmphasis) {
    EXPECT_EQ(Decode("Oggi \x86in TV\x87!"s), "Oggi in TV!");
    EXPECT_EQ(Decode("\x13\x86\xD6\xD0\x87"s), "\u4e2d");
    EXPECT_EQ(Decode("\x11\xE0\x86\x00M\xE0\x87"s), "M");
    EXPECT_EQ(Decode("\x15\uE086M\uE087"s), "M");
}

TEST(DvbText, ReplacesALineBreakByABlank) {
    EXPECT_EQ(Decode("Meteo\x8ASport"s), "Meteo Sport");
    EXPECT_EQ(Decode("\x11\x00M\xE0\x8A\x00S"s), "M S");
    EXPECT_EQ(Decode("\x15M\u008aS"s), "M S");
}

TEST(DvbText, DropsOtherControlCodes) {
    EXPECT_EQ(Decode("A\x80\x9F\x07\x7F\nB"s), "AB");
    EXPECT_EQ(Decode("\x15"
                     "A\tB\u0085"s),
              "AB");
}

TEST(DvbText, KeepsPrivateCharactersThatAreNotControlCodes) {
    EXPECT_EQ(Decode("\x15\uE000\uE041\uE0A0"s), "\uE000\uE041\uE0A0");
}

TEST(DvbText, MarksBytesOutsideTheTable) {
    EXPECT_EQ(Decode("A\xC0"
                     "B"s),
              "A\uFFFD"
              "B");
    EXPECT_EQ(Decode("\x15"
                     "A\xFF"
                     "B"s),
              "A\uFFFD"
              "B");
    EXPECT_EQ(Decode("\x11\x00"
                     "A\xD8\x00\x00"
                     "B"s),
              "A\uFFFD"
              "B");
}

TEST(DvbText, MarksATruncatedCharacter) {
    EXPECT_EQ(Decode("\x15"
                     "A\xC3"s),
              "A\uFFFD");
    EXPECT_EQ(Decode("\x11\x00"
                     "A\x00"s),
              "A\uFFFD");
    EXPECT_EQ(Decode("A\xC1"s), "A\uFFFD");
}

TEST(DvbText, DecodesTextLongerThanAnyTable) {
    const std::string text(100'000, '\xE8');
    std::string expected;
    for (size_t i = 0; i < text.size(); ++i) {
        expected += "\u00e8";
    }
    EXPECT_EQ(Decode("\x05" + text), expected);
}

TEST(DvbText, DecodesEveryPairOfBytes) {
    for (int first = 0; first < 256; ++first) {
        for (int second = 0; second < 256; ++second) {
            const std::string bytes{static_cast<char>(first), static_cast<char>(second)};
            const auto text = Decode(bytes);
            if (first >= 0x20) {
                EXPECT_TRUE(text.has_value());
            }
        }
    }
}

}  // namespace
}  // namespace applist::sim
