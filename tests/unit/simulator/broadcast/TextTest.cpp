// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <ostream>
#include <string>

#include <gtest/gtest.h>

#include "broadcast/Text.h"
#include "feed/BroadcastFilter.h"
#include "support/ScannedBroadcast.h"
#include "support/TsGenerator.h"

namespace applist::sim {
namespace {

using std::string_literals::operator""s;
using test::ScanBroadcast;
using test::TsApplication;
using test::TsApplications;
using test::TsBytes;
using test::TsDescriptor;
using test::TsGenerator;

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

// A call is formatted more densely than a list in braces.
TableCase Case(const char* name, const std::string& bytes, const char* text) {
    return {name, bytes, text};
}

class DvbTextTable : public testing::TestWithParam<TableCase> {};

TEST_P(DvbTextTable, DecodesItsCharacters) {
    EXPECT_EQ(Decode(GetParam().bytes), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    AnnexA, DvbTextTable,
    testing::Values(
        Case("Default", "Televideo"s, "Televideo"),
        Case("DefaultWithAccents", "Citt\301a, perch\302e"s, "Citt\u00e0, perch\u00e9"),
        Case("DefaultEndingInAnAccent", "Novit\301a"s, "Novit\u00e0"),
        Case("DefaultWithEuro", "\xA4 5"s, "\u20ac 5"),
        Case("Cyrillic", "\x01\xBD\xDE\xD2\xDE"s, "\u041d\u043e\u0432\u043e"),
        Case("Arabic", "\x02\xC7"s, "\u0627"), Case("Greek", "\x03\xC1\xE2"s, "\u0391\u03b2"),
        Case("Hebrew", "\x04\xE0"s, "\u05d0"), Case("Turkish", "\x05\xDD\xFE"s, "\u0130\u015f"),
        Case("Nordic", "\x06\xBF"s, "\u014b"), Case("Thai", "\x07\xA1"s, "\u0e01"),
        Case("Baltic", "\x09\xC0"s, "\u0104"), Case("Celtic", "\x0A\xA1"s, "\u1e02"),
        Case("LatinNine", "\x0B\xA4"s, "\u20ac"),
        Case("ByPartOne", "\x10\x00\x01 \xE8"s, " \u00e8"),
        Case("ByPartTwo", "\x10\x00\x02\xA3"s, "\u0141"),
        Case("ByPartFifteen", "\x10\x00\x0F\xBE"s, "\u0178"),
        Case("TwoByte", "\x11\x00M\x04\x14"s, "M\u0414"), Case("Korean", "\x12\xB0\xA1"s, "\uac00"),
        Case("SimplifiedChinese", "\x13\xD6\xD0"s, "\u4e2d"),
        Case("TraditionalChinese", "\x14\x4E\x2D"s, "\u4e2d"),
        Case("Utf8", "\025Caff\u00e8"s, "Caff\u00e8")),
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
    EXPECT_EQ(Decode("\025A\tB\u0085"s), "AB");
}

TEST(DvbText, KeepsPrivateCharactersThatAreNotControlCodes) {
    EXPECT_EQ(Decode("\x15\uE000\uE041\uE0A0"s), "\uE000\uE041\uE0A0");
}

TEST(DvbText, MarksBytesOutsideTheTable) {
    EXPECT_EQ(Decode("A\300B"s),
              "A\uFFFD"
              "B");
    EXPECT_EQ(Decode("\025A\377B"s),
              "A\uFFFD"
              "B");
    EXPECT_EQ(Decode("\x11\000A\xD8\x00\000B"s),
              "A\uFFFD"
              "B");
}

TEST(DvbText, MarksATruncatedCharacter) {
    EXPECT_EQ(Decode("\025A\xC3"s), "A\uFFFD");
    EXPECT_EQ(Decode("\x11\000A\x00"s), "A\uFFFD");
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

// In JIS X 0208, the character set that is active at the start of a text.
const std::string NEWS_IN_KANJI = "\x25\x4B\x25\x65\x21\x3C\x25\x39";

std::string Decode(const std::string& text, const std::string& language, TextCoding coding) {
    const TsBytes bytes(text.begin(), text.end());
    return DecodeText(bytes, language, coding).value_or("(none)");
}

// Packets of 204 bytes, as tuners for ISDB-T give them.
TsBytes Stream(const std::vector<TsApplication>& applications, uint16_t type,
               const std::string& service) {
    TsGenerator generator;
    for (int i = 0; i < 2; ++i) {
        generator.Add(0, test::TsAssociation({{1024, 0x01F0}}));
        generator.Add(0x01F0, test::TsMap(1024, {0x0300}, test::Signalling::DataComponent));
        generator.Add(0x0011, test::TsDescription({{1024, service}}));
        generator.Add(0x0300, TsApplications(applications, type));
    }
    return test::TsRepacked(generator.stream(), 0, 16);
}

TEST(IsdbBroadcast, HasNamesInJapaneseInTheCodesOfArib) {
    const TsApplication news{1, 1, 1, 3, {{"jpn", NEWS_IN_KANJI}}};
    const Broadcast broadcast = ScanBroadcast(Stream({news}, 0x0011, NEWS_IN_KANJI));
    const Snapshot& snapshot = broadcast.snapshots.back();
    EXPECT_EQ(OfferedItems(snapshot, {}), (Items{{"00000001.0001", "\u30cb\u30e5\u30fc\u30b9"}}));
    EXPECT_EQ(snapshot.services.at(0).name, "\u30cb\u30e5\u30fc\u30b9");
    EXPECT_EQ(snapshot.services[0].tables.at(0)->type, 0x0011);
    EXPECT_EQ(broadcast.damage.packets() + broadcast.damage.sections(), 0U);
}

TEST(IsdbBroadcast, HasOtherNamesInLatin9) {
    const TsApplication news{1, 1, 1, 3, {{"por", "Not\355cias \xA4"}}};
    const Broadcast broadcast = ScanBroadcast(Stream({news}, 0x0009, "TV P\372blica"));
    EXPECT_EQ(OfferedItems(broadcast.snapshots.back(), {}),
              (Items{{"00000001.0001", "Not\u00edcias \u20ac"}}));
    EXPECT_EQ(broadcast.snapshots.back().services.at(0).name, "TV P\u00fablica");
}

TEST(IsdbBroadcast, IsReadInTheCodingThatIsAskedFor) {
    const TsApplication news{1, 1, 1, 3, {{"por", "\x15Not\u00edcias"}}};
    const Broadcast broadcast = ScanBroadcast(Stream({news}, 0x0001, ""), TextCoding::Dvb);
    EXPECT_EQ(OfferedItems(broadcast.snapshots.back(), {}).at(0).name, "Not\u00edcias");
}

// The four tags are boundary and permission, autostart priority, cache control, randomized latency.
TEST(IsdbBroadcast, MayCarryDescriptorsOfItsOwn) {
    TsApplication application{1, 7, 2, 3, {{"jpn", NEWS_IN_KANJI}}};
    for (const uint8_t tag : TsBytes{0x30, 0x31, 0x32, 0x33}) {
        const TsBytes descriptor = TsDescriptor(tag, {0x01, 0x02, 0x03});
        application.descriptors.insert(application.descriptors.end(), descriptor.begin(),
                                       descriptor.end());
    }
    const TsBytes location = TsDescriptor(0x15, {'i', '.', 'h', 't', 'm', 'l'});
    application.descriptors.insert(application.descriptors.end(), location.begin(), location.end());
    const auto table = ParseApplicationTable(TsApplications({application}, 0x0011));
    ASSERT_TRUE(table);
    EXPECT_EQ(table->applications.at(0).location, "i.html");
    EXPECT_EQ(table->applications[0].names.at(0).text, "\u30cb\u30e5\u30fc\u30b9");
}

TEST(Text, IsDecodedAsAribInJapaneseWithoutADvbTable) {
    EXPECT_EQ(Decode(NEWS_IN_KANJI, "jpn", TextCoding::Dvb), "\u30cb\u30e5\u30fc\u30b9");
    EXPECT_EQ(Decode("\x15\u30cb\u30e5\u30fc\u30b9", "jpn", TextCoding::Dvb),
              "\u30cb\u30e5\u30fc\u30b9");
    EXPECT_EQ(Decode("%K", "eng", TextCoding::Dvb), "%K");
}

TEST(Text, FollowsTheShiftsOfArib) {
    EXPECT_EQ(Decode("\016TV\017\x46\x7C", "jpn", TextCoding::Arib), "\uff34\uff36\u65e5");
    EXPECT_EQ(Decode("", "jpn", TextCoding::Arib), "");
}

TEST(Text, MayBeAnyBytesInEachCoding) {
    uint32_t random = 1;
    for (int round = 0; round < 2000; ++round) {
        TsBytes bytes;
        for (int i = 0; i < round % 60; ++i) {
            random = random * 1664525U + 1013904223U;
            bytes.push_back(static_cast<uint8_t>(random >> 24U));
        }
        for (const TextCoding coding :
             {TextCoding::Dvb, TextCoding::Isdb, TextCoding::Arib, TextCoding::Latin}) {
            const auto text = DecodeText(bytes, "jpn", coding);
            EXPECT_TRUE(!text || text->size() <= bytes.size() * 16 + 1);
        }
    }
}

}  // namespace
}  // namespace applist::sim
