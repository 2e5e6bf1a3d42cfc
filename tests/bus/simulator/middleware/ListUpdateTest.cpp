// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "bus/simulator/Simulation.h"
#include "support/TsGenerator.h"

namespace applist::test {
namespace {

constexpr uint16_t MAP_PID = 0x0200;
constexpr uint16_t TABLE_PID = 0x0300;
constexpr uint16_t CLOCK_PID = 0x0100;
constexpr uint64_t SECOND = 90000;

const TsApplication NEWS{11, 1, 2, 3, {{"ita", "Notizie"}}};
const TsApplication WEATHER{11, 2, 1, 3, {{"ita", "Meteo"}}};
const TsApplication WEATHER_LIVE{11, 2, 1, 3, {{"ita", "Meteo in diretta"}}};
const TsApplication SPORT{11, 3, 2, 3, {{"ita", "Sport"}}};

// Two versions of a service's table: "news" is removed, "weather" renamed, "sport" added.
std::string TwoVersions() {
    TsGenerator generator;
    for (uint8_t version = 0; version < 2; ++version) {
        const std::vector<TsApplication> applications =
            version == 0 ? std::vector<TsApplication>{NEWS, WEATHER}
                         : std::vector<TsApplication>{SPORT, WEATHER_LIVE};
        for (uint64_t second = 0; second < 3; ++second) {
            generator.AddClock(CLOCK_PID, (version * uint64_t{3} + second) * SECOND / 100);
            generator.Add(0, TsAssociation({{1, MAP_PID}}));
            generator.Add(MAP_PID, TsMap(1, {TABLE_PID}));
            generator.Add(TABLE_PID, TsApplications(applications, 0x0010, version));
        }
    }
    return {generator.stream().begin(), generator.stream().end()};
}

// At the recorded speed, in which the second version follows 30 ms after the first.
TEST(ListUpdate, MakesTheListOfTheApplicationMatchTheBroadcast) {
    Simulation set;
    const auto list = set.StartList();
    const auto serve = set.Start({"serve", "--broadcast", set.File("broadcast.ts", TwoVersions())});
    ASSERT_TRUE(serve->WaitForText(": 1 added, 1 removed, 1 renamed\n"));
    EXPECT_EQ(set.Run({"call", "GetAllItems"}), SUCCESS);
    EXPECT_EQ(set.output(), "0000000b.0002\tMeteo in diretta\n0000000b.0003\tSport\n");
    // The selected news item was removed, so the selection moves to its neighbour.
    EXPECT_TRUE(serve->WaitForText("selection 0000000b.0002\tMeteo in diretta\n"));

    const auto second = set.StartList();
    EXPECT_TRUE(serve->WaitUntil([&] {
        const std::string output = serve->Output();
        return output.find("filled", output.find("filled") + 1) != std::string::npos;
    }));
    EXPECT_EQ(Simulation::Interrupt(*serve), SUCCESS);
    EXPECT_EQ(serve->Errors(), "");
}

}  // namespace
}  // namespace applist::test
