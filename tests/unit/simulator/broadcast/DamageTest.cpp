// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <functional>

#include <gmock/gmock.h>

#include "feed/BroadcastFilter.h"
#include "support/ScannedBroadcast.h"
#include "support/TsGenerator.h"

namespace applist::sim {
namespace {

using test::ScanBroadcast;
using test::TsBytes;
using test::TsGenerator;

constexpr uint16_t MAP_PID = 0x0200;
constexpr uint16_t TABLE_PID = 0x0300;
constexpr size_t PACKET = 188;
const test::TsApplication NEWS{11, 1, 2, 3, {{"ita", "Notizie"}}};
const test::TsApplication WEATHER{11, 2, 2, 3, {{"ita", "Meteo"}}};

TsGenerator Minimal() {
    TsGenerator generator;
    generator.Add(0, test::TsAssociation({{1, MAP_PID}}));
    generator.Add(MAP_PID, test::TsMap(1, {TABLE_PID}));
    generator.Add(TABLE_PID, test::TsApplications({NEWS}));
    return generator;
}

// Appends a packet of the table to the minimal stream, changes it and returns the counted damage.
Damage WithLastPacket(const std::function<void(uint8_t* packet)>& change) {
    TsGenerator generator = Minimal();
    generator.Add(TABLE_PID, test::TsApplications({WEATHER}, 0x0001, 1));
    TsBytes stream = generator.stream();
    change(&stream[stream.size() - PACKET]);
    const Broadcast broadcast = ScanBroadcast(stream);
    EXPECT_EQ(OfferedItems(broadcast.snapshots.back(), {}), (Items{{"0000000b.0001", "Notizie"}}));
    return broadcast.damage;
}

TEST(Damage, CountsPacketsThatTheReceiverMarked) {
    const Damage damage = WithLastPacket([](uint8_t* packet) { packet[1] |= 0x80U; });
    EXPECT_EQ(damage.markedPackets, 1U);
    EXPECT_EQ(Describe(damage), "1 in packets (1 marked as broken)");
}

TEST(Damage, CountsPlacesWithoutSync) {
    const Damage damage = WithLastPacket([](uint8_t* packet) { packet[0] = 0; });
    EXPECT_EQ(Describe(damage), "1 in packets (1 lost sync)");
}

TEST(Damage, CountsScrambledPackets) {
    const Damage damage = WithLastPacket([](uint8_t* packet) { packet[3] |= 0x80U; });
    EXPECT_EQ(Describe(damage), "1 in packets (1 scrambled)");
}

TEST(Damage, CountsAdaptationFieldsAndPointersBeyondThePacket) {
    for (const int length : {183, 200, 255}) {
        const Damage damage = WithLastPacket([&](uint8_t* packet) {
            packet[3] |= 0x20U;
            packet[4] = static_cast<uint8_t>(length);
        });
        EXPECT_EQ(Describe(damage), "1 in packets (1 malformed)") << length;
    }
    for (const int pointer : {183, 255}) {
        const Damage damage =
            WithLastPacket([&](uint8_t* packet) { packet[4] = static_cast<uint8_t>(pointer); });
        EXPECT_EQ(Describe(damage), "1 in packets (1 malformed)") << pointer;
    }
}

TEST(Damage, CountsGapsInTheCountOfPackets) {
    const Damage damage = WithLastPacket([](uint8_t* packet) {
        packet[3] = static_cast<uint8_t>(packet[3] + 5U);
        packet[10] ^= 0xFFU;  // Makes the section after the gap invalid.
    });
    EXPECT_EQ(damage.missingPackets, 1U);
}

TEST(Damage, CountsSectionsWithAnotherCrc) {
    const Damage damage = WithLastPacket([](uint8_t* packet) { packet[20] ^= 0x01U; });
    EXPECT_EQ(Describe(damage), "1 in sections (1 wrong CRC)");
}

TEST(Damage, CountsMalformedSections) {
    TsGenerator generator = Minimal();
    generator.Add(TABLE_PID, test::TsSection(0x74, 0x0010, {0xF0, 0x00, 0xF0, 0x20}));
    generator.Add(TABLE_PID, TsBytes{0x74, 0x30, 0x02, 0xAA, 0xBB});
    EXPECT_EQ(Describe(ScanBroadcast(generator.stream()).damage), "2 in sections (2 malformed)");
}

TEST(Damage, UsesTheReceivedSectionsOfAnIncompleteTable) {
    TsGenerator generator;
    generator.Add(0, test::TsAssociation({{1, MAP_PID}}));
    generator.Add(MAP_PID, test::TsMap(1, {TABLE_PID}));
    generator.Add(TABLE_PID, test::TsOneOf(test::TsApplications({NEWS}), 0, 1));
    const Broadcast broadcast = ScanBroadcast(generator.stream());
    EXPECT_EQ(OfferedItems(broadcast.snapshots.back(), {}).size(), 1U);
    EXPECT_EQ(Describe(broadcast.damage), "1 incomplete tables");
}

// The last packet of the stream begins at byte 564.
TEST(Damage, HasAPlace) {
    using testing::ElementsAre;
    EXPECT_THAT(WithLastPacket([](uint8_t* packet) { packet[1] |= 0x80U; }).places,
                ElementsAre("packet marked as broken at byte 564 on PID 0x0300"));
    EXPECT_THAT(WithLastPacket([](uint8_t* packet) { packet[0] = 0; }).places,
                ElementsAre("lost sync at byte 564"));
    EXPECT_THAT(WithLastPacket([](uint8_t* packet) { packet[20] ^= 0x01U; }).places,
                ElementsAre("wrong CRC at byte 564 on PID 0x0300"));
    EXPECT_THAT(WithLastPacket([](uint8_t* packet) {
                    packet[3] = static_cast<uint8_t>(packet[3] + 5U);
                    packet[10] ^= 0xFFU;
                }).places,
                testing::Contains("gap at byte 564 on PID 0x0300"));
}

TEST(Damage, KeepsTheFirstTenPlaces) {
    Damage damage;
    for (uint64_t byte = 0; byte < 20; ++byte) {
        damage.At(byte);
        damage.Add(&Damage::lostSync);
    }
    EXPECT_EQ(damage.lostSync, 20U);
    ASSERT_EQ(damage.places.size(), 10U);
    EXPECT_EQ(damage.places.back(), "lost sync at byte 9");
}

TEST(Damage, IsDescribedByKind) {
    EXPECT_EQ(Describe({}), "");
    Damage damage;
    damage.lostSync = 2;
    damage.missingPackets = 1;
    damage.wrongChecksums = 3;
    damage.surplusChanges = 4;
    EXPECT_EQ(
        Describe(damage),
        "3 in packets (2 lost sync, 1 gaps), 3 in sections (3 wrong CRC), 4 changes left out");
}

TEST(Damage, IsBoundedInMemoryByTheNumberOfChanges) {
    TsGenerator generator = Minimal();
    for (unsigned version = 1; version <= 1100; ++version) {
        test::TsApplication changing = NEWS;
        changing.id = static_cast<uint16_t>(version + 1);
        generator.Add(TABLE_PID,
                      test::TsApplications({changing}, 0x0001, static_cast<uint8_t>(version % 32)));
    }
    const Broadcast broadcast = ScanBroadcast(generator.stream());
    EXPECT_EQ(broadcast.snapshots.size(), 1000U);
    EXPECT_EQ(broadcast.damage.surplusChanges, 101U);
}

}  // namespace
}  // namespace applist::sim
