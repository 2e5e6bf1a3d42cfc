// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "feed/BroadcastFilter.h"
#include "support/ScannedBroadcast.h"
#include "support/TsGenerator.h"

namespace applist::sim {
namespace {

using test::ScanBroadcast;
using test::TsApplication;
using test::TsApplications;
using test::TsAssociation;
using test::TsBytes;
using test::TsGenerator;
using test::TsMap;
using testing::IsEmpty;

constexpr uint16_t MAP_PID = 0x0200;
constexpr uint16_t TABLE_PID = 0x0300;
constexpr size_t PACKET = 188;

const TsApplication NEWS{11, 1, 2, 3, {{"ita", "Notizie"}}};
const TsApplication WEATHER{11, 2, 1, 3, {{"ita", "Meteo"}}};

// One service with one table.
TsGenerator Minimal(const std::vector<TsApplication>& applications) {
    TsGenerator generator;
    generator.Add(0, TsAssociation({{1, MAP_PID}}));
    generator.Add(MAP_PID, TsMap(1, {TABLE_PID}));
    generator.Add(TABLE_PID, TsApplications(applications));
    return generator;
}

// At the end of the stream.
Items OfferedItems(const Broadcast& broadcast) {
    return OfferedItems(broadcast.snapshots.back(), {});
}

Items Offered(const TsGenerator& generator) {
    return OfferedItems(ScanBroadcast(generator.stream()));
}

const Items BOTH{{"0000000b.0001", "Notizie"}, {"0000000b.0002", "Meteo"}};

TEST(BroadcastScan, GivesTheApplicationsOfTheServices) {
    EXPECT_EQ(Offered(Minimal({NEWS, WEATHER})), BOTH);
}

TEST(BroadcastScan, FindsTablesThatCameBeforeTheOnesThatNameThem) {
    TsGenerator generator;
    generator.Add(TABLE_PID, TsApplications({NEWS, WEATHER}));
    generator.Add(MAP_PID, TsMap(1, {TABLE_PID}));
    generator.Add(0, TsAssociation({{1, MAP_PID}}));
    EXPECT_EQ(Offered(generator), BOTH);
}

TEST(BroadcastScan, GivesAnApplicationOnceHoweverOftenItIsSent) {
    TsGenerator generator;
    for (int i = 0; i < 3; ++i) {
        generator.Add(0, TsAssociation({{1, MAP_PID}, {2, MAP_PID + 1}}));
        generator.Add(MAP_PID, TsMap(1, {TABLE_PID}));
        generator.Add(MAP_PID + 1, TsMap(2, {TABLE_PID, TABLE_PID + 1}));
        generator.Add(TABLE_PID, TsApplications({NEWS, WEATHER}));
        generator.Add(TABLE_PID + 1, TsApplications({WEATHER, NEWS}, 0x0010));
    }
    const Broadcast broadcast = ScanBroadcast(generator.stream());
    EXPECT_EQ(OfferedItems(broadcast), BOTH);
    ASSERT_EQ(broadcast.snapshots.size(), 1U);
    const auto& services = broadcast.snapshots[0].services;
    ASSERT_EQ(services.size(), 2U);
    EXPECT_EQ(services[0].tables.size(), 1U);
    EXPECT_EQ(services[1].tables.size(), 2U);
    EXPECT_EQ(broadcast.damage.packets(), 0U);
    EXPECT_EQ(broadcast.damage.sections(), 0U);
}

TEST(BroadcastScan, KnowsServicesThatShareThePidOfTheirMaps) {
    TsGenerator generator;
    generator.Add(0, TsAssociation({{1, MAP_PID}, {2, MAP_PID}}));
    generator.Add(MAP_PID, TsMap(1, {TABLE_PID}));
    generator.Add(MAP_PID, TsMap(2, {TABLE_PID + 1}));
    generator.Add(TABLE_PID, TsApplications({NEWS}));
    generator.Add(TABLE_PID + 1, TsApplications({WEATHER}));
    EXPECT_EQ(Offered(generator), BOTH);
}

TEST(BroadcastScan, OmitsApplicationsThatAreNotForTheViewer) {
    TsApplication hidden = WEATHER;
    hidden.visibility = 1;
    TsApplication stopped = WEATHER;
    stopped.controlCode = 4;
    EXPECT_EQ(Offered(Minimal({hidden, stopped, NEWS})), Items{BOTH[0]});
}

TEST(BroadcastScan, NamesAnApplicationWithoutAReadableNameByItsId) {
    TsApplication nameless = NEWS;
    nameless.names = {{"ita", "\x1F\x01zz"}, {"eng", ""}};
    EXPECT_EQ(Offered(Minimal({nameless})), (Items{{"0000000b.0001", "0000000b.0001"}}));
}

TEST(BroadcastScan, TakesNoTableFromAPidThatNoServiceNames) {
    TsGenerator generator = Minimal({NEWS});
    generator.Add(TABLE_PID + 1, TsApplications({WEATHER}));
    EXPECT_EQ(Offered(generator), Items{BOTH[0]});
}

TEST(BroadcastScan, IgnoresOtherTablesOnTheSamePid) {
    TsGenerator generator = Minimal({NEWS});
    generator.Add(TABLE_PID, test::TsSection(0x4C, 1, {0xAA}));
    const Broadcast broadcast = ScanBroadcast(generator.stream());
    EXPECT_EQ(OfferedItems(broadcast), Items{BOTH[0]});
    EXPECT_EQ(broadcast.damage.sections(), 0U);
}

TEST(BroadcastScan, UsesTheLastVersionOfATable) {
    TsGenerator generator = Minimal({NEWS});
    generator.Add(TABLE_PID, TsApplications({WEATHER}, 0x0001, 1));
    EXPECT_EQ(Offered(generator), Items{BOTH[1]});
}

TEST(BroadcastScan, UsesAnotherTableWithTheSameVersion) {
    const auto section = [](const TsApplication& application, uint8_t number) {
        return test::TsOneOf(TsApplications({application}), number, 1);
    };
    TsGenerator generator = Minimal({NEWS});
    for (int i = 0; i < 2; ++i) {
        generator.Add(TABLE_PID, section(NEWS, 0));
        generator.Add(TABLE_PID, section(WEATHER, 1));
    }
    EXPECT_EQ(Offered(generator), BOTH);
    EXPECT_EQ(ScanBroadcast(generator.stream()).snapshots.size(), 2U);
}

TEST(BroadcastScan, WaitsForATableThatIsOnlyAnnounced) {
    TsGenerator generator = Minimal({NEWS});
    TsBytes next = TsApplications({WEATHER}, 0x0001, 1);
    next[5] &= 0xFEU;
    next.resize(next.size() - 4);
    test::TsAppendCrc(next);
    generator.Add(TABLE_PID, next);
    EXPECT_EQ(Offered(generator), Items{BOTH[0]});
}

TEST(BroadcastScan, CombinesATableOfManyPackets) {
    std::vector<TsApplication> applications;
    for (uint16_t id = 0; id < 20; ++id) {
        applications.push_back({1, id, 2, 3, {{"ita", "Servizio numero " + std::to_string(id)}}});
    }
    const Items items = Offered(Minimal(applications));
    ASSERT_EQ(items.size(), 20U);
    EXPECT_EQ(items.back(), (Item{"00000001.0013", "Servizio numero 19"}));
}

TEST(BroadcastScan, SkipsAndCountsASectionWithAWrongCrc) {
    TsGenerator generator = Minimal({NEWS});
    TsBytes broken = TsApplications({WEATHER}, 0x0010);
    broken.back() ^= 0x01U;
    generator.Add(TABLE_PID, broken);
    const Broadcast broadcast = ScanBroadcast(generator.stream());
    EXPECT_EQ(OfferedItems(broadcast), Items{BOTH[0]});
    EXPECT_EQ(broadcast.damage.sections(), 1U);
}

TEST(BroadcastScan, SkipsAndCountsATableThatDoesNotFitItsLength) {
    TsGenerator generator = Minimal({NEWS});
    generator.Add(TABLE_PID, test::TsSection(0x74, 0x0010, {0xF0, 0x00, 0xF0, 0x20}));
    const Broadcast broadcast = ScanBroadcast(generator.stream());
    EXPECT_EQ(OfferedItems(broadcast), Items{BOTH[0]});
    EXPECT_EQ(broadcast.damage.sections(), 1U);
}

TEST(BroadcastScan, SkipsAndCountsASectionInTheShortForm) {
    TsGenerator generator = Minimal({NEWS});
    generator.Add(TABLE_PID, TsBytes{0x74, 0x30, 0x02, 0xAA, 0xBB});
    const Broadcast broadcast = ScanBroadcast(generator.stream());
    EXPECT_EQ(OfferedItems(broadcast), Items{BOTH[0]});
    EXPECT_EQ(broadcast.damage.sections(), 1U);
}

TEST(BroadcastScan, ContinuesAfterLostBytes) {
    TsBytes stream = Minimal({NEWS}).stream();
    const TsBytes more = stream;
    stream.erase(stream.begin() + 2 * PACKET + 100, stream.begin() + 2 * PACKET + 110);
    stream.insert(stream.end(), more.begin(), more.end());
    const Broadcast broadcast = ScanBroadcast(stream);
    EXPECT_EQ(OfferedItems(broadcast), Items{BOTH[0]});
    EXPECT_EQ(broadcast.damage.lostSync, 1U);
}

TEST(BroadcastScan, FindsNothingInBytesWithoutAStream) {
    const Broadcast broadcast = ScanBroadcast(TsBytes(1000, 0x11));
    ASSERT_EQ(broadcast.snapshots.size(), 1U);
    EXPECT_THAT(broadcast.snapshots[0].services, IsEmpty());
    EXPECT_EQ(broadcast.damage.packets(), 1U);
}

TEST(BroadcastScan, ReadsAStreamTruncatedAtAnyByte) {
    const TsBytes stream = Minimal({NEWS, WEATHER}).stream();
    for (size_t size = 0; size <= stream.size(); ++size) {
        const TsBytes cut(stream.begin(), stream.begin() + static_cast<std::ptrdiff_t>(size));
        const Items items = OfferedItems(ScanBroadcast(cut));
        EXPECT_EQ(items.empty(), size < stream.size()) << size;
    }
}

// Packets of each size with changing tables, a clock, names and all kinds of damage.
TsBytes Eventful(size_t before, size_t behind) {
    TsGenerator generator;
    for (uint8_t version = 0; version < 4; ++version) {
        TsApplication changing = NEWS;
        changing.id = version;
        generator.AddClock(0x0100, 90000U * version);
        generator.Add(0, TsAssociation({{1, MAP_PID}}));
        generator.Add(0x0011, test::TsDescription({{1, "Rete 1"}}));
        generator.Add(MAP_PID, TsMap(1, {TABLE_PID}));
        generator.Add(TABLE_PID, TsApplications({changing}, 0x0001, version));
        generator.Add(TABLE_PID, TsApplications({WEATHER, changing}, 0x0010, version));
    }
    TsBytes stream = test::TsRepacked(generator.stream(), before, behind);
    stream.at(1300) ^= 0xFFU;
    stream.erase(stream.begin() + 2300, stream.begin() + 2310);
    stream.resize(stream.size() - 3 - behind);
    return stream;
}

TEST(BroadcastScan, DoesNotDependOnThePiecesInWhichAStreamArrives) {
    for (const auto& [before, behind] : {std::pair{0, 0}, {4, 0}, {0, 16}}) {
        const TsBytes stream = Eventful(static_cast<size_t>(before), static_cast<size_t>(behind));
        const Broadcast whole = ScanBroadcast(stream);
        EXPECT_EQ(whole.damage.lostSync, 2U);
        EXPECT_GE(whole.snapshots.size(), 4U);
        for (size_t piece = 1; piece < 800; ++piece) {
            ASSERT_EQ(test::TextOf(ScanBroadcast(stream, {}, piece)), test::TextOf(whole)) << piece;
        }
    }
}

TEST(BroadcastScan, ReportsATableWithItsLastByte) {
    TsGenerator generator = Minimal({NEWS});
    generator.Add(0, TsAssociation({{1, MAP_PID}}));
    generator.Add(0, TsAssociation({{1, MAP_PID}}));
    generator.Add(TABLE_PID, TsApplications({NEWS, WEATHER}, 0x0001, 1));
    Damage damage;
    Items items;
    TransportStream parser(
        std::nullopt, [&](const Snapshot& snapshot, bool) { items = OfferedItems(snapshot, {}); },
        damage);
    const ByteSpan stream(generator.stream());
    const size_t used = parser.Parse(stream.first(stream.size() - 1), false);
    EXPECT_EQ(items, Items{BOTH[0]});
    EXPECT_EQ(used, stream.size() - PACKET);
    parser.Parse(stream.subspan(used), false);
    EXPECT_EQ(items, BOTH);
}

// Packets of a PID that no table names.
TsBytes Video(size_t packets) {
    TsBytes video(packets * PACKET, 0xAB);
    for (size_t start = 0; start < video.size(); start += PACKET) {
        video[start] = 0x47;
        video[start + 1] = 0x01;
    }
    return video;
}

// The stream has 202,000 packets. A minute of 40 Mbit/s has eight times as many.
TEST(BroadcastScan, LosesNoSectionAmongManyPackets) {
    constexpr unsigned TABLES = 2000;
    unsigned reported = 0;
    Damage damage;
    TransportStream parser(
        std::nullopt, [&](const Snapshot&, bool replaces) { reported += replaces ? 1U : 0U; },
        damage);
    TsGenerator generator = Minimal({NEWS});
    TsBytes left = generator.stream();
    for (unsigned i = 1; i <= TABLES; ++i) {
        const TsBytes video = Video(100);
        const auto known = static_cast<std::ptrdiff_t>(generator.stream().size());
        generator.Add(TABLE_PID, TsApplications({WEATHER}, 0x0001, static_cast<uint8_t>(i % 32)));
        left.insert(left.end(), video.begin(), video.end());
        left.insert(left.end(), generator.stream().begin() + known, generator.stream().end());
        const size_t used = parser.Parse(left, false);
        left.erase(left.begin(), left.begin() + static_cast<std::ptrdiff_t>(used));
    }
    EXPECT_EQ(reported, TABLES);
    EXPECT_EQ(Describe(damage), "");
}

TEST(BroadcastScan, ReadsAnyChangeOfOneByte) {
    const TsBytes stream = Minimal({NEWS, WEATHER}).stream();
    for (size_t position = 0; position < stream.size(); ++position) {
        TsBytes changed = stream;
        changed[position] ^= 0xFFU;
        EXPECT_LE(OfferedItems(ScanBroadcast(changed)).size(), 2U) << position;
    }
}

}  // namespace
}  // namespace applist::sim
