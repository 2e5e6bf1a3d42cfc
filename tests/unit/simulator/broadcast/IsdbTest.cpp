// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "broadcast/Text.h"
#include "feed/BroadcastFilter.h"
#include "support/ScannedBroadcast.h"
#include "support/TsGenerator.h"

namespace applist::sim {
namespace {

using test::ScanBroadcast;
using test::TsApplication;
using test::TsApplications;
using test::TsBytes;
using test::TsDescriptor;
using test::TsGenerator;
using testing::ElementsAre;

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
    const TsApplication news{1,
                             1,
                             1,
                             3,
                             {{"por",
                               "Not\xED"
                               "cias \xA4"}}};
    const Broadcast broadcast = ScanBroadcast(Stream({news}, 0x0009,
                                                     "TV P\xFA"
                                                     "blica"));
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
    EXPECT_EQ(Decode("\x0E"
                     "TV\x0F"
                     "\x46\x7C",
                     "jpn", TextCoding::Arib),
              "\uff34\uff36\u65e5");
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
