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
using test::TsGenerator;
using test::TsMap;
using testing::ElementsAre;

constexpr uint16_t MAP_PID = 0x0200;
constexpr uint16_t TABLE_PID = 0x0300;
constexpr uint16_t CLOCK_PID = 0x0100;
constexpr uint64_t SECOND = 90000;

const TsApplication NEWS{11, 1, 2, 3, {{"ita", "Notizie"}}};
const TsApplication WEATHER{11, 2, 1, 3, {{"ita", "Meteo"}}};

TsGenerator WithOneService() {
    TsGenerator generator;
    generator.Add(0, TsAssociation({{1, MAP_PID}}));
    generator.Add(MAP_PID, TsMap(1, {TABLE_PID}));
    return generator;
}

// Seconds and names of each snapshot of a stream: "0: Notizie, Meteo".
std::vector<std::string> Moments(const TsGenerator& generator) {
    std::vector<std::string> texts;
    for (const Snapshot& snapshot : ScanBroadcast(generator.stream()).snapshots) {
        std::string text =
            snapshot.seconds ? std::to_string(static_cast<int>(*snapshot.seconds)) + ":" : "?:";
        for (const Item& item : OfferedItems(snapshot, {})) {
            text += ' ' + item.name;
        }
        texts.push_back(text);
    }
    return texts;
}

TEST(Moments, AreOneWhileTablesAreOnlyRepeated) {
    TsGenerator generator = WithOneService();
    for (int i = 0; i < 3; ++i) {
        generator.Add(TABLE_PID, TsApplications({NEWS}));
        generator.Add(TABLE_PID, TsApplications({WEATHER}, 0x0010));
    }
    EXPECT_THAT(Moments(generator), ElementsAre("0: Notizie Meteo"));
}

TEST(Moments, BeginWithEachNewVersion) {
    TsGenerator generator = WithOneService();
    generator.Add(TABLE_PID, TsApplications({NEWS}, 0x0001, 0));
    generator.Add(TABLE_PID, TsApplications({NEWS, WEATHER}, 0x0001, 1));
    generator.Add(TABLE_PID, TsApplications({NEWS, WEATHER}, 0x0001, 1));
    generator.Add(TABLE_PID, TsApplications({}, 0x0001, 2));
    EXPECT_THAT(Moments(generator), ElementsAre("0: Notizie", "?: Notizie Meteo", "?:"));
}

TEST(Moments, DoNotBeginWithAVersionWithoutChanges) {
    TsGenerator generator = WithOneService();
    generator.Add(TABLE_PID, TsApplications({NEWS}, 0x0001, 0));
    generator.Add(TABLE_PID, TsApplications({NEWS}, 0x0001, 1));
    EXPECT_THAT(Moments(generator), ElementsAre("0: Notizie"));
}

TEST(Moments, WaitForAllSectionsOfAVersion) {
    const auto section = [](const TsApplication& application, uint8_t version, uint8_t number) {
        return test::TsOneOf(TsApplications({application}, 0x0001, version), number, 1);
    };
    TsGenerator generator = WithOneService();
    generator.Add(TABLE_PID, section(NEWS, 0, 0));
    generator.Add(TABLE_PID, section(WEATHER, 0, 1));
    generator.Add(TABLE_PID, section(WEATHER, 1, 1));
    generator.Add(TABLE_PID, section(NEWS, 0, 0));
    EXPECT_THAT(Moments(generator), ElementsAre("0: Notizie Meteo"));
    generator.Add(TABLE_PID, section(WEATHER, 2, 1));
    generator.Add(TABLE_PID, section(WEATHER, 2, 0));
    EXPECT_THAT(Moments(generator), ElementsAre("0: Notizie Meteo", "?: Meteo"));
}

TEST(Moments, FollowAServiceThatNamesOtherTables) {
    TsGenerator generator = WithOneService();
    generator.Add(TABLE_PID, TsApplications({NEWS}));
    generator.Add(TABLE_PID + 1, TsApplications({WEATHER}));
    generator.Add(MAP_PID, TsMap(1, {TABLE_PID + 1}, test::Signalling::Described, 1));
    EXPECT_THAT(Moments(generator), ElementsAre("0: Notizie", "?: Meteo"));
}

TEST(Moments, FollowAStreamThatNamesOtherServices) {
    TsGenerator generator = WithOneService();
    generator.Add(TABLE_PID, TsApplications({NEWS}));
    generator.Add(MAP_PID + 1, TsMap(2, {TABLE_PID + 1}));
    generator.Add(TABLE_PID + 1, TsApplications({WEATHER}));
    generator.Add(0, TsAssociation({{2, MAP_PID + 1}}, 1));
    EXPECT_THAT(Moments(generator), ElementsAre("0: Notizie", "?: Meteo"));
}

TEST(Moments, TakeTheirTimeFromTheClockOfTheStream) {
    TsGenerator generator = WithOneService();
    generator.AddClock(CLOCK_PID, 7 * SECOND);
    generator.Add(TABLE_PID, TsApplications({NEWS}, 0x0001, 0));
    generator.AddClock(CLOCK_PID, 10 * SECOND);
    generator.Add(TABLE_PID, TsApplications({WEATHER}, 0x0001, 1));
    generator.AddClock(CLOCK_PID, 15 * SECOND);
    generator.Add(TABLE_PID, TsApplications({NEWS}, 0x0001, 2));
    EXPECT_THAT(Moments(generator), ElementsAre("0: Notizie", "3: Meteo", "8: Notizie"));
}

TEST(Moments, LetTheFirstGatherTablesForTenSeconds) {
    TsGenerator generator = WithOneService();
    generator.AddClock(CLOCK_PID, 0);
    generator.Add(TABLE_PID, TsApplications({NEWS}));
    generator.AddClock(CLOCK_PID, 9 * SECOND);
    generator.Add(TABLE_PID, TsApplications({WEATHER}, 0x0010));
    EXPECT_THAT(Moments(generator), ElementsAre("0: Notizie Meteo"));
    generator.AddClock(CLOCK_PID, 12 * SECOND);
    generator.Add(TABLE_PID, TsApplications({{11, 3, 2, 3, {{"ita", "Sport"}}}}, 0x0002));
    EXPECT_THAT(Moments(generator), ElementsAre("0: Notizie Meteo", "12: Notizie Sport Meteo"));
}

std::optional<double> ClockAfter(const std::vector<uint64_t>& ticks) {
    TsGenerator generator;
    for (const uint64_t tick : ticks) {
        generator.AddClock(CLOCK_PID, tick);
    }
    StreamClock clock;
    const test::TsBytes& stream = generator.stream();
    for (size_t start = 0; start < stream.size(); start += 188) {
        clock.Push(ByteSpan(stream).subspan(start, 188));
    }
    return clock.seconds();
}

TEST(StreamClock, CountsFromTheFirstReference) {
    EXPECT_EQ(ClockAfter({}), std::nullopt);
    EXPECT_EQ(ClockAfter({12345}), 0.0);
    EXPECT_EQ(ClockAfter({SECOND, 2 * SECOND, 3 * SECOND + SECOND / 2}), 2.5);
}

TEST(StreamClock, ContinuesWhenTheReferenceWrapsAround) {
    EXPECT_EQ(ClockAfter({(uint64_t{1} << 33U) - SECOND, SECOND}), 2.0);
}

TEST(StreamClock, CountsAJumpAsZeroTime) {
    EXPECT_EQ(ClockAfter({100 * SECOND, 101 * SECOND, 5 * SECOND, 6 * SECOND}), 2.0);
    EXPECT_EQ(ClockAfter({SECOND, 1000 * SECOND, 1001 * SECOND}), 1.0);
}

}  // namespace
}  // namespace applist::sim
