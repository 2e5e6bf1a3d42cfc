// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "feed/BroadcastFilter.h"
#include "support/ScannedBroadcast.h"
#include "support/TsGenerator.h"

namespace applist::sim {
namespace {

using test::ScanSections;
using test::TsApplication;
using test::TsApplications;
using test::TsBytes;

const TsApplication NEWS{11, 1, 2, 3, {{"ita", "Notizie"}}};
const TsApplication WEATHER{11, 2, 1, 3, {{"ita", "Meteo"}}};
const Items ONE{{"0000000b.0001", "Notizie"}};
const Items BOTH{{"0000000b.0001", "Notizie"}, {"0000000b.0002", "Meteo"}};

TsBytes operator+(TsBytes one, const TsBytes& other) {
    one.insert(one.end(), other.begin(), other.end());
    return one;
}

Items Offered(const Broadcast& broadcast) {
    return OfferedItems(broadcast.snapshots.back(), {});
}

TEST(SectionFile, GivesConsecutiveTables) {
    const Broadcast broadcast =
        ScanSections(TsApplications({NEWS}) + TsApplications({WEATHER}, 0x0010));
    EXPECT_EQ(Offered(broadcast), BOTH);
    ASSERT_EQ(broadcast.snapshots.size(), 1U);
    ASSERT_EQ(broadcast.snapshots[0].services.size(), 1U);
    EXPECT_FALSE(broadcast.snapshots[0].services[0].id);
    EXPECT_EQ(Describe(broadcast.damage), "");
}

TEST(SectionFile, CombinesTheSectionsOfATable) {
    const TsBytes first = test::TsOneOf(TsApplications({NEWS}), 0, 1);
    const TsBytes second = test::TsOneOf(TsApplications({WEATHER}), 1, 1);
    EXPECT_EQ(Offered(ScanSections(second + first)), BOTH);
}

TEST(SectionFile, ChangesWithEachNewVersion) {
    const Broadcast broadcast = ScanSections(TsApplications({NEWS}) + TsApplications({NEWS}) +
                                             TsApplications({NEWS, WEATHER}, 0x0001, 1));
    ASSERT_EQ(broadcast.snapshots.size(), 2U);
    EXPECT_EQ(OfferedItems(broadcast.snapshots[0], {}), ONE);
    EXPECT_EQ(OfferedItems(broadcast.snapshots[1], {}), BOTH);
}

TEST(SectionFile, SkipsOtherTables) {
    const TsBytes timeAndDate{0x70, 0x70, 0x05, 1, 2, 3, 4, 5};
    const Broadcast broadcast =
        ScanSections(test::TsAssociation({{1, 0x0200}}) + timeAndDate + TsApplications({NEWS}));
    EXPECT_EQ(Offered(broadcast), ONE);
    EXPECT_EQ(Describe(broadcast.damage), "");
}

TEST(SectionFile, SkipsAndCountsASectionWithAnotherCrc) {
    TsBytes broken = TsApplications({WEATHER});
    broken.back() ^= 0x01U;
    const Broadcast between =
        ScanSections(TsApplications({NEWS}, 0x0010) + broken + TsApplications({NEWS}, 0x0011));
    EXPECT_EQ(Offered(between), ONE);
    EXPECT_EQ(Describe(between.damage), "1 in sections (1 wrong CRC)");
    EXPECT_EQ(Describe(ScanSections(TsApplications({NEWS}) + broken).damage),
              "1 in sections (1 wrong CRC)");
}

TEST(SectionFile, FindsTheNextTableAfterAWrongLength) {
    TsBytes broken = TsApplications({WEATHER});
    broken[2] = static_cast<uint8_t>(broken[2] + 3U);
    const Broadcast broadcast = ScanSections(broken + TsApplications({NEWS}));
    EXPECT_EQ(Offered(broadcast), ONE);
    EXPECT_EQ(Describe(broadcast.damage), "1 in sections (1 wrong CRC)");
}

TEST(SectionFile, FindsTheNextTableAfterStuffing) {
    const Broadcast broadcast =
        ScanSections(TsApplications({WEATHER}) + TsBytes(50, 0xFF) + TsApplications({NEWS}, 2));
    EXPECT_EQ(Offered(broadcast).size(), 2U);
    EXPECT_EQ(Describe(broadcast.damage), "1 in sections (1 malformed)");
}

TEST(SectionFile, DoesNotDependOnThePiecesInWhichItArrives) {
    TsBytes broken = TsApplications({WEATHER});
    broken[2] = static_cast<uint8_t>(broken[2] + 3U);
    TsBytes wrong = TsApplications({WEATHER});
    wrong.back() ^= 0x01U;
    const TsBytes file = TsApplications({NEWS}) + wrong + TsApplications({NEWS}, 2) + broken +
                         TsBytes(50, 0xFF) + TsApplications({NEWS, WEATHER}, 0x0001, 1) +
                         TsBytes{0x74, 0xF0};
    const Broadcast whole = ScanSections(file);
    EXPECT_EQ(whole.snapshots.size(), 2U);
    EXPECT_EQ(Describe(whole.damage), "3 in sections (2 wrong CRC, 1 malformed)");
    for (size_t piece = 1; piece < file.size(); ++piece) {
        ASSERT_EQ(test::TextOf(ScanSections(file, piece)), test::TextOf(whole)) << piece;
    }
}

TEST(SectionFile, OffersNothingWithoutTables) {
    EXPECT_TRUE(ScanSections({}).snapshots.at(0).services.empty());
    const Broadcast noise = ScanSections(TsBytes(1000, 0x5A));
    EXPECT_TRUE(noise.snapshots.at(0).services.empty());
    EXPECT_EQ(noise.damage.sections(), 1U);
}

TEST(SectionFile, IsRecognisedByACompleteFirstSection) {
    const TsBytes table = TsApplications({NEWS});
    EXPECT_EQ(BeginsWithSection(table, true), Found::Yes);
    EXPECT_EQ(BeginsWithSection(table, false), Found::Yes);
    EXPECT_EQ(BeginsWithSection({}, true), Found::No);
    EXPECT_EQ(BeginsWithSection(TsBytes(188, 0x47), true), Found::No);
    TsBytes broken = table;
    broken[10] ^= 0x01U;
    EXPECT_EQ(BeginsWithSection(broken, false), Found::No);
    const TsBytes part(table.begin(), table.end() - 1);
    EXPECT_EQ(BeginsWithSection(part, true), Found::No);
    EXPECT_EQ(BeginsWithSection(part, false), Found::Unknown);
}

}  // namespace
}  // namespace applist::sim
