// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// What transport streams and files of sections contain, and the damage in them.
#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include "broadcast/PacketReader.h"
#include "feed/BroadcastFilter.h"
#include "support/ScannedBroadcast.h"
#include "support/TsGenerator.h"

namespace applist::sim {
namespace {

using test::ScanBroadcast;
using test::ScanSections;
using test::TsApplication;
using test::TsApplications;
using test::TsAssociation;
using test::TsBytes;
using test::TsMap;
using test::TsOneOf;
using Applications = std::vector<TsApplication>;

constexpr uint16_t MAP_PID = 0x0200;
constexpr uint16_t TABLE_PID = 0x0300;
constexpr size_t PACKET = 188;
constexpr uint64_t SECOND = 90000;
const TsApplication NEWS{11, 1, 2, 3, {{"ita", "Notizie"}}};
const TsApplication WEATHER{11, 2, 1, 3, {{"ita", "Meteo"}}};
const TsApplication SPORT{11, 3, 1, 3, {{"ita", "Sport"}}};
const Items BOTH{{"0000000b.0001", "Notizie"}, {"0000000b.0002", "Meteo"}};

/// A transport stream, built table by table.
class Stream : public test::TsGenerator {
public:
    operator const TsBytes&() const { return stream(); }
    Stream& Services(const std::map<uint16_t, uint16_t>& maps, uint8_t version = 0) {
        return Section(0, TsAssociation(maps, version));
    }
    Stream& Map(uint16_t service, const std::vector<uint16_t>& tables, uint16_t pid = MAP_PID,
                uint8_t version = 0) {
        return Section(pid, TsMap(service, tables, test::Signalling::Described, version));
    }
    Stream& Table(const Applications& applications, uint8_t version = 0, uint16_t type = 1,
                  uint16_t pid = TABLE_PID) {
        return Section(pid, TsApplications(applications, type, version));
    }
    Stream& Section(uint16_t pid, const TsBytes& section) {
        Add(pid, section);
        return *this;
    }
    Stream& Clock(uint64_t seconds) {
        AddClock(0x0100, seconds * SECOND);
        return *this;
    }
};

Broadcast Scan(const TsBytes& stream) {
    return ScanBroadcast(stream);
}

Stream OneService() {
    return Stream().Services({{1, MAP_PID}}).Map(1, {TABLE_PID});
}

Stream OneTable(const Applications& applications) {
    return OneService().Table(applications);
}

/// Part of a table in two sections.
TsBytes Half(const TsApplication& application, uint8_t number, uint8_t version = 0) {
    return TsOneOf(TsApplications({application}, 0x0001, version), number, 1);
}

TsBytes NotYetValid(TsBytes section) {
    section[5] &= 0xFEU;
    section.resize(section.size() - 4);
    test::TsAppendCrc(section);
    return section;
}

TsBytes WrongCrc(TsBytes section) {
    section.back() ^= 0x01U;
    return section;
}

/// A stream of news whose last packet, at byte 564, has another version with bits flipped: pairs of
/// a byte's position and its bits.
TsBytes LastPacket(const std::vector<std::pair<size_t, int>>& flips) {
    TsBytes stream = OneTable({NEWS}).Table({WEATHER}, 1);
    for (const auto& [position, bits] : flips) {
        stream[stream.size() - PACKET + position] ^= static_cast<uint8_t>(bits);
    }
    return stream;
}

TsBytes operator+(TsBytes one, const TsBytes& other) {
    one.insert(one.end(), other.begin(), other.end());
    return one;
}

/// The seconds and offered names of each snapshot, then the damage with its places: "0: Notizie; 3:
/// Meteo + 1 in packets (1 lost sync): lost sync at byte 0".
std::string Contents(const Broadcast& broadcast) {
    std::string text;
    for (const Snapshot& snapshot : broadcast.snapshots) {
        text += text.empty() ? "" : "; ";
        text += snapshot.seconds ? std::to_string(static_cast<int>(*snapshot.seconds)) + ":" : "?:";
        for (const Item& item : OfferedItems(snapshot, {})) {
            text += ' ' + item.name;
        }
    }
    const std::string damage = Describe(broadcast.damage);
    text += damage.empty() ? "" : " + " + damage;
    const char* separator = ": ";
    for (const std::string& place : broadcast.damage.places) {
        text += std::exchange(separator, ", ") + place;
    }
    return text;
}

struct Input {
    const char* name;
    TsBytes bytes;
    std::string contents;
};

// A call is formatted more densely than a list in braces.
Input Case(const char* name, const TsBytes& bytes, const char* contents) {
    return {name, bytes, contents};
}

void PrintTo(const Input& input, std::ostream* out) {
    *out << input.bytes.size() << " bytes";
}

class TransportStreams : public testing::TestWithParam<Input> {};

TEST_P(TransportStreams, HaveTheseApplicationsAndDamage) {
    EXPECT_EQ(Contents(Scan(GetParam().bytes)), GetParam().contents);
}

auto Name = [](const auto& test) { return test.param.name; };

INSTANTIATE_TEST_SUITE_P(
    Tables, TransportStreams,
    testing::Values(
        Case("OfOneService", OneTable({NEWS, WEATHER}), "0: Notizie Meteo"),
        Case("BeforeTheOnesThatNameThem",
             Stream().Table({NEWS, WEATHER}).Map(1, {TABLE_PID}).Services({{1, MAP_PID}}),
             "0: Notizie Meteo"),
        Case("OfServicesThatShareThePidOfTheirMaps",
             Stream()
                 .Services({{1, MAP_PID}, {2, MAP_PID}})
                 .Map(1, {TABLE_PID})
                 .Map(2, {TABLE_PID + 1})
                 .Table({NEWS})
                 .Table({WEATHER}, 0, 1, TABLE_PID + 1),
             "0: Notizie Meteo"),
        Case("OnAPidThatNoServiceNamesAreIgnored",
             OneTable({NEWS}).Table({WEATHER}, 0, 1, TABLE_PID + 1), "0: Notizie"),
        Case("OfOtherKindsAreIgnored",
             OneTable({NEWS}).Section(TABLE_PID, test::TsSection(0x4C, 1, {0xAA})), "0: Notizie"),
        Case("ThatAreOnlyAnnouncedAreIgnored",
             OneTable({NEWS}).Section(TABLE_PID, NotYetValid(TsApplications({WEATHER}, 1, 1))),
             "0: Notizie"),
        Case("ThatAlternateUnderTheSameVersionAreIgnored",
             OneTable({NEWS}).Table({WEATHER}).Table({NEWS}).Table({WEATHER}).Table({NEWS}),
             "0: Notizie"),
        Case("WithTheSameVersionReplaceEachOtherOnceTheyAreRepeated",
             OneTable({NEWS})
                 .Section(TABLE_PID, Half(NEWS, 0))
                 .Section(TABLE_PID, Half(WEATHER, 1))
                 .Section(TABLE_PID, Half(NEWS, 0))
                 .Section(TABLE_PID, Half(WEATHER, 1)),
             "0: Notizie; ?: Notizie Meteo")),
    Name);

INSTANTIATE_TEST_SUITE_P(
    Moments, TransportStreams,
    testing::Values(
        Case("AreOneWhileTablesAreOnlyRepeated",
             OneTable({NEWS}).Table({WEATHER}, 0, 0x0010).Table({NEWS}).Table({WEATHER}, 0, 0x0010),
             "0: Notizie Meteo"),
        Case("BeginWithEachNewVersion",
             OneTable({NEWS}).Table({NEWS, WEATHER}, 1).Table({NEWS, WEATHER}, 1).Table({}, 2),
             "0: Notizie; ?: Notizie Meteo; ?:"),
        Case("DoNotBeginWithAVersionWithoutChanges", OneTable({NEWS}).Table({NEWS}, 1),
             "0: Notizie"),
        Case("DoNotBeginWithPartsOfDifferentVersions",
             OneService()
                 .Section(TABLE_PID, Half(NEWS, 0))
                 .Section(TABLE_PID, Half(WEATHER, 1))
                 .Section(TABLE_PID, Half(WEATHER, 1, 1))
                 .Section(TABLE_PID, Half(NEWS, 0)),
             "0: Notizie Meteo"),
        Case("BeginWithTheLastPartOfAVersion",
             OneService()
                 .Section(TABLE_PID, Half(NEWS, 0))
                 .Section(TABLE_PID, Half(WEATHER, 1))
                 .Section(TABLE_PID, Half(WEATHER, 1, 2))
                 .Section(TABLE_PID, Half(WEATHER, 0, 2)),
             "0: Notizie Meteo; ?: Meteo"),
        Case("FollowAServiceThatNamesOtherTables",
             OneTable({NEWS})
                 .Table({WEATHER}, 0, 1, TABLE_PID + 1)
                 .Map(1, {TABLE_PID + 1}, MAP_PID, 1),
             "0: Notizie; ?: Meteo"),
        Case("FollowAStreamThatNamesOtherServices",
             OneTable({NEWS})
                 .Map(2, {TABLE_PID + 1}, MAP_PID + 1)
                 .Table({WEATHER}, 0, 1, TABLE_PID + 1)
                 .Services({{2, MAP_PID + 1}}, 1),
             "0: Notizie; ?: Meteo"),
        Case("HaveTheTimeOfTheStreamsClock",
             OneService()
                 .Clock(7)
                 .Table({NEWS})
                 .Clock(10)
                 .Table({WEATHER}, 1)
                 .Clock(15)
                 .Table({NEWS}, 2),
             "0: Notizie; 3: Meteo; 8: Notizie"),
        Case("GatherTablesForTenSecondsInTheFirst",
             OneService()
                 .Clock(0)
                 .Table({NEWS})
                 .Clock(9)
                 .Table({WEATHER}, 0, 0x0010)
                 .Clock(12)
                 .Table({SPORT}, 0, 0x0002),
             "0: Notizie Meteo; 12: Notizie Sport Meteo")),
    Name);

INSTANTIATE_TEST_SUITE_P(
    Damage, TransportStreams,
    testing::Values(
        Case("InAMarkedPacket", LastPacket({{1, 0x80}}),
             "0: Notizie + 1 in packets (1 marked as broken): packet marked as broken at byte 564 "
             "on PID 0x0300"),
        Case("InAPacketWithoutSync", LastPacket({{0, 0x47}}),
             "0: Notizie + 1 in packets (1 lost sync): lost sync at byte 564"),
        Case("InAScrambledPacket", LastPacket({{3, 0x80}}),
             "0: Notizie + 1 in packets (1 scrambled): scrambled packet at byte 564 on PID 0x0300"),
        Case("InAnAdaptationFieldAsLongAsThePacket", LastPacket({{3, 0x20}, {4, 183}}),
             "0: Notizie + 1 in packets (1 malformed): malformed packet at byte 564 on PID 0x0300"),
        Case("InAnAdaptationFieldBeyondThePacket", LastPacket({{3, 0x20}, {4, 200}}),
             "0: Notizie + 1 in packets (1 malformed): malformed packet at byte 564 on PID 0x0300"),
        Case("InAnAdaptationFieldFarBeyondThePacket", LastPacket({{3, 0x20}, {4, 255}}),
             "0: Notizie + 1 in packets (1 malformed): malformed packet at byte 564 on PID 0x0300"),
        Case("InAPointerToTheEndOfThePacket", LastPacket({{4, 183}}),
             "0: Notizie + 1 in packets (1 malformed): malformed packet at byte 564 on PID 0x0300"),
        Case("InAPointerBeyondThePacket", LastPacket({{4, 255}}),
             "0: Notizie + 1 in packets (1 malformed): malformed packet at byte 564 on PID 0x0300"),
        Case("InTheCountOfPackets", LastPacket({{3, 0x07}, {10, 0xFF}}),
             "0: Notizie + 1 in packets (1 gaps), 1 in sections (1 wrong CRC): gap at byte 564 on "
             "PID 0x0300, wrong CRC at byte 564 on PID 0x0300"),
        Case("InASectionsCrc", LastPacket({{20, 0x01}}),
             "0: Notizie + 1 in sections (1 wrong CRC): wrong CRC at byte 564 on PID 0x0300"),
        Case("InATableThatDoesNotFitItsLength",
             OneTable({NEWS}).Section(TABLE_PID,
                                      test::TsSection(0x74, 0x0010, {0xF0, 0x00, 0xF0, 0x20})),
             "0: Notizie + 1 in sections (1 malformed): malformed section at byte 564 on PID "
             "0x0300"),
        Case("InASectionInTheShortForm",
             OneTable({NEWS}).Section(TABLE_PID, {0x74, 0x30, 0x02, 0xAA, 0xBB}),
             "0: Notizie + 1 in sections (1 malformed): malformed section at byte 564 on PID "
             "0x0300"),
        Case("InAnIncompleteTable", OneService().Section(TABLE_PID, Half(NEWS, 0)),
             "0: Notizie + 1 incomplete tables"),
        Case("InBytesWithoutAStream", TsBytes(1000, 0x11),
             "0: + 1 in packets (1 lost sync): lost sync at byte 0")),
    Name);

class SectionFiles : public testing::TestWithParam<Input> {};

TEST_P(SectionFiles, HaveTheseApplicationsAndDamage) {
    EXPECT_EQ(Contents(ScanSections(GetParam().bytes)), GetParam().contents);
}

TsBytes TooLong(TsBytes section) {
    section[2] = static_cast<uint8_t>(section[2] + 3U);
    return section;
}

INSTANTIATE_TEST_SUITE_P(
    Tables, SectionFiles,
    testing::Values(
        Case("AfterEachOther", TsApplications({NEWS}) + TsApplications({WEATHER}, 0x0010),
             "0: Notizie Meteo"),
        Case("InSeveralSections", Half(WEATHER, 1) + Half(NEWS, 0), "0: Notizie Meteo"),
        Case("ThatChange",
             TsApplications({NEWS}) + TsApplications({NEWS}) +
                 TsApplications({NEWS, WEATHER}, 1, 1),
             "0: Notizie; ?: Notizie Meteo"),
        Case("OfOtherKindsAreIgnored",
             TsAssociation({{1, 0x0200}}) + TsBytes{0x70, 0x70, 0x05, 1, 2, 3, 4, 5} +
                 TsApplications({NEWS}),
             "0: Notizie"),
        Case("AroundOneWithAWrongCrc",
             TsApplications({NEWS}, 0x0010) + WrongCrc(TsApplications({WEATHER})) +
                 TsApplications({NEWS}, 0x0011),
             "0: Notizie + 1 in sections (1 wrong CRC): wrong CRC at byte 49"),
        Case("BeforeOneWithAWrongCrc", TsApplications({NEWS}) + WrongCrc(TsApplications({WEATHER})),
             "0: Notizie + 1 in sections (1 wrong CRC): wrong CRC at byte 49"),
        Case("AfterOneWithAWrongLength",
             TooLong(TsApplications({WEATHER})) + TsApplications({NEWS}),
             "0: Notizie + 1 in sections (1 wrong CRC): wrong CRC at byte 0"),
        Case("AfterStuffing",
             TsApplications({WEATHER}) + TsBytes(50, 0xFF) + TsApplications({NEWS}, 2),
             "0: Meteo Notizie + 1 in sections (1 malformed): malformed section at byte 47"),
        Case("AreMissing", TsBytes(), "0:"),
        Case("AreNoise", TsBytes(1000, 0x5A),
             "0: + 1 in sections (1 malformed): malformed section at byte 0")),
    Name);

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

TEST(Pieces, DoNotChangeTheContentsOfAFileOfSections) {
    const TsBytes file = TsApplications({NEWS}) + WrongCrc(TsApplications({WEATHER})) +
                         TsApplications({NEWS}, 2) + TooLong(TsApplications({WEATHER})) +
                         TsBytes(50, 0xFF) + TsApplications({NEWS, WEATHER}, 0x0001, 1) +
                         TsBytes{0x74, 0xF0};
    const Broadcast whole = ScanSections(file);
    EXPECT_FALSE(whole.snapshots.at(0).services.at(0).id);
    EXPECT_EQ(whole.snapshots.size(), 2U);
    EXPECT_EQ(Describe(whole.damage), "3 in sections (2 wrong CRC, 1 malformed)");
    for (size_t piece = 1; piece < file.size(); ++piece) {
        ASSERT_EQ(test::TextOf(ScanSections(file, piece)), test::TextOf(whole)) << piece;
    }
}

// Packets of each size with changing tables, a clock, names and all kinds of damage.
TsBytes Eventful(size_t before, size_t behind) {
    Stream generator;
    for (uint8_t version = 0; version < 4; ++version) {
        TsApplication changing = NEWS;
        changing.id = version;
        generator.Clock(version)
            .Services({{1, MAP_PID}})
            .Section(0x0011, test::TsDescription({{1, "Rete 1"}}))
            .Map(1, {TABLE_PID})
            .Table({changing}, version)
            .Table({WEATHER, changing}, version, 0x0010);
    }
    TsBytes stream = test::TsRepacked(generator, before, behind);
    stream.at(1300) ^= 0xFFU;
    stream.erase(stream.begin() + 2300, stream.begin() + 2310);
    stream.resize(stream.size() - 3 - behind);
    return stream;
}

TEST(Pieces, DoNotChangeTheContentsOfAStream) {
    for (const auto& [before, behind] : {std::pair<size_t, size_t>{0, 0}, {4, 0}, {0, 16}}) {
        const TsBytes stream = Eventful(before, behind);
        const Broadcast whole = ScanBroadcast(stream);
        EXPECT_EQ(whole.damage.lostSync, 2U);
        EXPECT_GE(whole.snapshots.size(), 4U);
        for (size_t piece = 1; piece < 800; ++piece) {
            ASSERT_EQ(test::TextOf(ScanBroadcast(stream, {}, piece)), test::TextOf(whole)) << piece;
        }
    }
}

TEST(TransportStream, HasTheSameTablesHoweverOftenTheyAreSent) {
    Stream generator;
    for (int i = 0; i < 3; ++i) {
        generator.Services({{1, MAP_PID}, {2, MAP_PID + 1}})
            .Map(1, {TABLE_PID})
            .Map(2, {TABLE_PID, TABLE_PID + 1}, MAP_PID + 1)
            .Table({NEWS, WEATHER})
            .Table({WEATHER, NEWS}, 0, 0x0010, TABLE_PID + 1);
    }
    const Broadcast broadcast = Scan(generator);
    EXPECT_EQ(Contents(broadcast), "0: Notizie Meteo");
    EXPECT_EQ(OfferedItems(broadcast.snapshots.at(0), {}), BOTH);
    const auto& services = broadcast.snapshots[0].services;
    ASSERT_EQ(services.size(), 2U);
    EXPECT_EQ(services[0].tables.size(), 1U);
    EXPECT_EQ(services[1].tables.size(), 2U);
}

TEST(TransportStream, MayHaveATableOfManyPackets) {
    Applications applications;
    for (uint16_t id = 0; id < 20; ++id) {
        applications.push_back({1, id, 2, 3, {{"ita", "Servizio numero " + std::to_string(id)}}});
    }
    const Items items = OfferedItems(Scan(OneTable(applications)).snapshots.back(), {});
    ASSERT_EQ(items.size(), 20U);
    EXPECT_EQ(items.back(), (Item{"00000001.0013", "Servizio numero 19"}));
}

TEST(TransportStream, IsReadOnAfterLostBytes) {
    TsBytes stream = OneTable({NEWS});
    stream.erase(stream.begin() + 2 * PACKET + 100, stream.begin() + 2 * PACKET + 110);
    const Broadcast broadcast = Scan(stream + OneTable({NEWS}));
    EXPECT_EQ(OfferedItems(broadcast.snapshots.back(), {}), Items{BOTH[0]});
    EXPECT_EQ(broadcast.damage.lostSync, 1U);
}

TEST(TransportStream, HasNoApplicationsIfItIsTruncatedBeforeTheEndOfTheirTable) {
    const TsBytes stream = OneTable({NEWS, WEATHER});
    for (size_t size = 0; size <= stream.size(); ++size) {
        const TsBytes cut(stream.begin(), stream.begin() + static_cast<std::ptrdiff_t>(size));
        const Items items = OfferedItems(Scan(cut).snapshots.back(), {});
        EXPECT_EQ(items.empty(), size < stream.size()) << size;
    }
}

TEST(TransportStream, ReportsATableWithItsLastByte) {
    const Stream generator = OneTable({NEWS})
                                 .Services({{1, MAP_PID}})
                                 .Services({{1, MAP_PID}})
                                 .Table({NEWS, WEATHER}, 1);
    sim::Damage damage;
    Items items;
    const auto parser = MakeStreamParser(
        std::nullopt, [&](const Snapshot& snapshot, bool) { items = OfferedItems(snapshot, {}); },
        damage);
    const ByteSpan stream(generator.stream());
    const size_t used = parser->Parse(stream.first(stream.size() - 1), false);
    EXPECT_EQ(items, Items{BOTH[0]});
    EXPECT_EQ(used, stream.size() - PACKET);
    parser->Parse(stream.subspan(used), false);
    EXPECT_EQ(items, BOTH);
}

// The stream has 202,000 packets. A minute of 40 Mbit/s has eight times as many.
TEST(TransportStream, LosesNoSectionAmongManyPackets) {
    constexpr unsigned TABLES = 2000;
    TsBytes video(100 * PACKET, 0xAB);
    for (size_t start = 0; start < video.size(); start += PACKET) {
        video[start] = 0x47;
        video[start + 1] = 0x01;
    }
    unsigned reported = 0;
    sim::Damage damage;
    const auto parser = MakeStreamParser(
        std::nullopt, [&](const Snapshot&, bool replaces) { reported += replaces ? 1U : 0U; },
        damage);
    Stream generator = OneTable({NEWS});
    TsBytes left = generator;
    for (unsigned i = 1; i <= TABLES; ++i) {
        const auto known = static_cast<std::ptrdiff_t>(generator.stream().size());
        generator.Table({WEATHER}, static_cast<uint8_t>(i % 32));
        left.insert(left.end(), video.begin(), video.end());
        left.insert(left.end(), generator.stream().begin() + known, generator.stream().end());
        const size_t used = parser->Parse(left, false);
        left.erase(left.begin(), left.begin() + static_cast<std::ptrdiff_t>(used));
    }
    EXPECT_EQ(reported, TABLES);
    EXPECT_EQ(Describe(damage), "");
}

TEST(TransportStream, HasAtMostAThousandMoments) {
    Stream generator = OneTable({NEWS});
    for (unsigned version = 1; version <= 1100; ++version) {
        TsApplication changing = NEWS;
        changing.id = static_cast<uint16_t>(version + 1);
        generator.Table({changing}, static_cast<uint8_t>(version % 32));
    }
    const Broadcast broadcast = Scan(generator);
    EXPECT_EQ(broadcast.snapshots.size(), 1000U);
    EXPECT_EQ(broadcast.damage.surplusChanges, 101U);
}

TEST(DamageCount, KeepsTheFirstTenPlaces) {
    sim::Damage damage;
    for (uint64_t byte = 0; byte < 20; ++byte) {
        damage.At(byte);
        damage.Add(&sim::Damage::lostSync);
    }
    EXPECT_EQ(damage.lostSync, 20U);
    ASSERT_EQ(damage.places.size(), 10U);
    EXPECT_EQ(damage.places.back(), "lost sync at byte 9");
}

TEST(DamageCount, IsDescribedByKind) {
    EXPECT_EQ(Describe({}), "");
    sim::Damage damage;
    damage.lostSync = 2;
    damage.missingPackets = 1;
    damage.wrongChecksums = 3;
    damage.surplusChanges = 4;
    EXPECT_EQ(
        Describe(damage),
        "3 in packets (2 lost sync, 1 gaps), 3 in sections (3 wrong CRC), 4 changes left out");
}

std::optional<double> ClockAfter(const std::vector<uint64_t>& ticks) {
    Stream generator;
    for (const uint64_t tick : ticks) {
        generator.AddClock(0x0100, tick);
    }
    StreamClock clock;
    for (size_t start = 0; start < generator.stream().size(); start += PACKET) {
        clock.Push(ByteSpan(generator.stream()).subspan(start, PACKET));
    }
    return clock.seconds();
}

TEST(StreamClock, CountsFromTheFirstReferenceWithoutJumps) {
    EXPECT_EQ(ClockAfter({}), std::nullopt);
    EXPECT_EQ(ClockAfter({12345}), 0.0);
    EXPECT_EQ(ClockAfter({SECOND, 2 * SECOND, 3 * SECOND + SECOND / 2}), 2.5);
    EXPECT_EQ(ClockAfter({(uint64_t{1} << 33U) - SECOND, SECOND}), 2.0) << "wraps around";
    EXPECT_EQ(ClockAfter({100 * SECOND, 101 * SECOND, 5 * SECOND, 6 * SECOND}), 2.0);
    EXPECT_EQ(ClockAfter({SECOND, 1000 * SECOND, 1001 * SECOND}), 1.0);
}

// The second service is unnamed.
Broadcast ThreeServices() {
    return Scan(
        Stream()
            .Services({{1, 0x0200}, {2, 0x0201}, {1031, 0x0202}})
            .Map(1, {0x0300}, 0x0200)
            .Map(2, {0x0301}, 0x0201)
            .Map(1031, {0x0302}, 0x0202)
            .Section(0x0011, test::TsDescription({{1, "\x15Rete Citt\u00e0"}, {1031, "Sport Uno"}}))
            .Table({NEWS}, 0, 1, 0x0300)
            .Table({WEATHER}, 0, 1, 0x0301)
            .Table({SPORT}, 0, 1, 0x0302));
}

std::string NamesOf(const std::vector<std::string>& services) {
    std::string names;
    for (const Item& item : OfferedItems(ThreeServices().snapshots.back(), {services, {}, false})) {
        names += item.name + " ";
    }
    return names;
}

TEST(Services, HaveTheNamesOfTheDescriptionTable) {
    const auto services = ThreeServices().snapshots.at(0).services;
    ASSERT_EQ(services.size(), 3U);
    EXPECT_EQ(services[0].name, "Rete Citt\u00e0");
    EXPECT_EQ(services[1].name, "");
    EXPECT_EQ(services[2].name, "Sport Uno");
}

TEST(Services, AreSelectedByNumberOrName) {
    EXPECT_EQ(NamesOf({}), "Notizie Meteo Sport ");
    EXPECT_EQ(NamesOf({"1031"}), "Sport ");
    EXPECT_EQ(NamesOf({"0x407"}), "Sport ");
    EXPECT_EQ(NamesOf({"sport UNO"}), "Sport ");
    EXPECT_EQ(NamesOf({"RETE CITT\u00c0", "2"}), "Notizie Meteo ");
    EXPECT_EQ(NamesOf({"2", "1"}), "Notizie Meteo ");
    for (const char* none : {"3", "", "1x", " 1", "-1", "65537", "Sport", "0x"}) {
        EXPECT_EQ(NamesOf({none}), "") << none;
    }
}

TEST(Services, ThatAreMissingAreReportedWithTheExistingOnes) {
    EXPECT_EQ(MissingService(ThreeServices(), {{"1", "Sport Uno"}, {}, false}), "");
    EXPECT_EQ(MissingService(ThreeServices(), {{"1", "7"}, {}, false}),
              "no service '7'; it has 1 (Rete Citt\u00e0), 2, 1031 (Sport Uno)");
    EXPECT_EQ(MissingService({{Snapshot{}}, {}}, {{"7"}, {}, false}),
              "no service '7'; the broadcast does not name any");
}

}  // namespace
}  // namespace applist::sim
