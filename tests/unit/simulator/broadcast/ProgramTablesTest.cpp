// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <vector>

#include <gmock/gmock.h>

#include "broadcast/ByteReader.h"
#include "broadcast/ProgramTables.h"
#include "support/TsGenerator.h"

namespace applist::sim {
namespace {

using test::Signalling;
using testing::ElementsAre;
using testing::IsEmpty;

const std::vector<uint8_t> BYTES{0x01, 0x02, 0x03, 0x04, 0x05, 0x06, 0x07, 0x08};

TEST(ByteReader, ReadsNumbersMostSignificantByteFirst) {
    ByteReader reader(BYTES);
    EXPECT_EQ(reader.U8(), 0x01);
    EXPECT_EQ(reader.U16(), 0x0203);
    EXPECT_EQ(reader.U32(), 0x04050607U);
    EXPECT_EQ(reader.left(), 1U);
    EXPECT_FALSE(reader.failed());
}

TEST(ByteReader, ReadsToTheVeryEndWithoutFailing) {
    ByteReader reader(BYTES);
    EXPECT_EQ(reader.Take(BYTES.size()).size(), BYTES.size());
    EXPECT_EQ(reader.left(), 0U);
    EXPECT_FALSE(reader.failed());
}

TEST(ByteReader, GivesZeroForATruncatedNumber) {
    for (size_t size = 0; size < 4; ++size) {
        ByteReader reader(ByteSpan(BYTES).first(size));
        EXPECT_EQ(reader.U32(), 0U);
        EXPECT_TRUE(reader.failed());
    }
}

TEST(ByteReader, GivesNoMoreDataAfterAFailure) {
    ByteReader reader(BYTES);
    EXPECT_THAT(reader.Take(BYTES.size() + 1), IsEmpty());
    EXPECT_EQ(reader.U8(), 0);
    EXPECT_EQ(reader.left(), 0U);
    EXPECT_TRUE(reader.failed());
}

TEST(ByteReader, TakesALoopByItsTwelveBitLength) {
    const std::vector<uint8_t> bytes{0xF0, 0x02, 0xAA, 0xBB, 0xCC};
    ByteReader reader(bytes);
    EXPECT_THAT(reader.TakeLoop(), ElementsAre(0xAA, 0xBB));
    EXPECT_EQ(reader.left(), 1U);
}

TEST(ByteReader, FailsOnALoopLongerThanTheBytes) {
    const std::vector<uint8_t> bytes{0xFF, 0xFF, 0xAA};
    ByteReader reader(bytes);
    EXPECT_THAT(reader.TakeLoop(), IsEmpty());
    EXPECT_TRUE(reader.failed());
}

TEST(TableSection, GivesTheHeaderAndTheBytesBeforeTheCrc) {
    const auto bytes = test::TsSection(0x74, 0x8010, {0xAA, 0xBB}, 21, 3);
    const auto section = ParseTableSection(bytes);
    ASSERT_TRUE(section);
    EXPECT_EQ(section->tableId, 0x74);
    EXPECT_EQ(section->extension, 0x8010);
    EXPECT_EQ(section->version, 21);
    EXPECT_TRUE(section->current);
    EXPECT_EQ(section->number, 3);
    EXPECT_THAT(section->body, ElementsAre(0xAA, 0xBB));
}

TEST(TableSection, MarksATableThatIsNotYetValid) {
    auto bytes = test::TsSection(0x74, 1, {});
    bytes[5] &= 0xFEU;
    ASSERT_TRUE(ParseTableSection(bytes));
    EXPECT_FALSE(ParseTableSection(bytes)->current);
}

TEST(TableSection, RefusesTheShortForm) {
    auto bytes = test::TsSection(0x74, 1, {});
    bytes[1] &= 0x7FU;
    EXPECT_FALSE(ParseTableSection(bytes));
}

TEST(TableSection, RefusesALengthThatDoesNotFitTheBytes) {
    auto bytes = test::TsSection(0x74, 1, {0xAA});
    bytes.push_back(0);
    EXPECT_FALSE(ParseTableSection(bytes));
}

TEST(TableSection, RefusesALengthWithoutRoomForTheCrc) {
    EXPECT_FALSE(ParseTableSection(test::TsBytes{0x74, 0xB0, 0x05, 0, 1, 0xC1, 0, 0}));
    EXPECT_FALSE(ParseTableSection(test::TsBytes{0x74, 0xB0, 0x08, 0, 1, 0xC1, 0, 0, 1, 2, 3}));
    EXPECT_TRUE(ParseTableSection(test::TsBytes{0x74, 0xB0, 0x09, 0, 1, 0xC1, 0, 0, 1, 2, 3, 4}));
}

TEST(ProgramAssociation, NamesTheServicesWithoutTheNetwork) {
    const auto programs =
        ParseProgramAssociation(test::TsAssociation({{1, 0x0200}, {1031, 0x1FFE}}));
    ASSERT_TRUE(programs);
    ASSERT_EQ(programs->size(), 2U);
    EXPECT_EQ((*programs)[0].number, 1);
    EXPECT_EQ((*programs)[0].pid, 0x0200);
    EXPECT_EQ((*programs)[1].number, 1031);
    EXPECT_EQ((*programs)[1].pid, 0x1FFE);
}

TEST(ProgramAssociation, IsRefusedWithBytesLeftOver) {
    EXPECT_FALSE(ParseProgramAssociation(test::TsSection(0x00, 1, {0, 1, 0xE1})));
}

TEST(ProgramAssociation, IsNoOtherTable) {
    EXPECT_FALSE(ParseProgramAssociation(test::TsMap(1, {})));
    EXPECT_FALSE(ParseProgramMap(test::TsAssociation({})));
}

TEST(ProgramMap, NamesTheApplicationTablesHoweverTheyAreSignalled) {
    for (const Signalling signalling :
         {Signalling::Described, Signalling::EmptyDescriptor, Signalling::NoDescriptor}) {
        const auto map = ParseProgramMap(test::TsMap(7, {0x1EC5, 0x1EC6}, signalling));
        ASSERT_TRUE(map);
        EXPECT_EQ(map->number, 7);
        EXPECT_THAT(map->applicationPids, ElementsAre(0x1EC5, 0x1EC6));
    }
}

TEST(ProgramMap, NamesNoneForAServiceWithoutApplications) {
    const auto map = ParseProgramMap(test::TsMap(7, {}));
    ASSERT_TRUE(map);
    EXPECT_THAT(map->applicationPids, IsEmpty());
}

TEST(ProgramMap, IsRefusedWhenALoopIsLongerThanTheTable) {
    EXPECT_FALSE(ParseProgramMap(test::TsSection(0x02, 1, {0xE1, 0x00, 0xF0, 0x05, 0x00})));
    EXPECT_FALSE(ParseProgramMap(
        test::TsSection(0x02, 1, {0xE1, 0, 0xF0, 0, 0x05, 0xE1, 0, 0xF0, 0x02, 0x6F})));
}

TEST(ServiceDescription, IsRefusedWhenALoopIsLongerThanTheTable) {
    const test::TsBytes whole = test::TsDescription({{1, "Uno"}});
    ASSERT_TRUE(ParseServiceDescription(whole));
    const test::TsBytes body(whole.begin() + 8, whole.end() - 4);
    for (size_t size = 4; size < body.size(); ++size) {
        const test::TsBytes cut(body.begin(), body.begin() + static_cast<std::ptrdiff_t>(size));
        EXPECT_FALSE(ParseServiceDescription(test::TsSection(0x42, 1, cut))) << size;
    }
}

TEST(ServiceDescription, IsNoOtherTable) {
    EXPECT_FALSE(ParseServiceDescription(test::TsMap(1, {})));
}

}  // namespace
}  // namespace applist::sim
