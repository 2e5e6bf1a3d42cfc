// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <climits>
#include <cstdint>
#include <utility>

#include <gmock/gmock.h>

#include "PlatformSettings.h"
#include "unit/visibility/VisibilityFixture.h"

namespace applist::test {
namespace {

using testing::ElementsAre;
using PlatformSettingsOfASet = Set;

TEST_F(PlatformSettingsOfASet, HaveTheseKeys) {
    EXPECT_EQ(PlatformSettings::AUTORUN_DATA_SERVICE_KEY, AUTORUN);
    EXPECT_EQ(PlatformSettings::DATA_SERVICE_KEY, DATA_SERVICE);
    EXPECT_EQ(PlatformSettings::AUTOSTART_APP, AUTOSTART);
}

TEST_F(PlatformSettingsOfASet, AutorunIsOnForAnyNumberButZero) {
    for (const auto& [stored, expected] : {std::pair{0, false}, {1, true}, {2, true}, {-1, true}}) {
        TheSettings() = {};
        TheSettings().bools[AUTORUN] = stored;
        ClearLog();
        EXPECT_EQ(PlatformSettings::IsAutorunDataService(), expected) << stored;
        EXPECT_THAT(TheSettings().reads, ElementsAre("bool " + AUTORUN));
        EXPECT_THAT(Log(), ElementsAre(Debug("Get Autorun Data Service", "IsAutorunDataService"),
                                       Debug("Autorun Data Service value from vconf: " +
                                                 std::to_string(stored),
                                             "IsAutorunDataService")));
    }
}

TEST_F(PlatformSettingsOfASet, AutorunThatCannotBeReadIsFalse) {
    TheSettings().ints[AUTORUN] = 1;
    EXPECT_FALSE(PlatformSettings::IsAutorunDataService());
    EXPECT_THAT(
        Log(),
        ElementsAre(
            Debug("Get Autorun Data Service", "IsAutorunDataService"),
            Error("Can not get value for Autorun Data Service menu item", "IsAutorunDataService"),
            Debug("Autorun Data Service value from vconf: 0", "IsAutorunDataService")));
}

TEST_F(PlatformSettingsOfASet, AnAutostartAppIsAnyNumberButZero) {
    for (const auto& [stored, expected] :
         {std::pair{0, false}, {1, true}, {2, true}, {-1, true}, {INT_MIN, true}}) {
        TheSettings() = {};
        TheSettings().ints[AUTOSTART] = stored;
        ClearLog();
        EXPECT_EQ(PlatformSettings::IsAutostartApp(), expected) << stored;
        EXPECT_THAT(TheSettings().reads, ElementsAre("int " + AUTOSTART));
        EXPECT_THAT(
            Log(), ElementsAre(
                       Debug("Get autostart application information", "IsAutostartApp"),
                       Debug("Autostart application value from vconf: " + std::to_string(stored))));
    }
}

TEST_F(PlatformSettingsOfASet, AutostartThatCannotBeReadIsFalse) {
    TheSettings().bools[AUTOSTART] = 1;
    EXPECT_FALSE(PlatformSettings::IsAutostartApp());
    EXPECT_THAT(Log(),
                ElementsAre(Debug("Get autostart application information", "IsAutostartApp"),
                            Error("Can not get value for autostart application", "IsAutostartApp"),
                            Debug("Autostart application value from vconf: 0", "IsAutostartApp")));
}

TEST_F(PlatformSettingsOfASet, TheDataServiceFlagComesAsItIs) {
    for (const int stored : {0, 2, 4, 6, 7, -1, INT_MAX}) {
        TheSettings() = {};
        TheSettings().ints[DATA_SERVICE] = stored;
        ClearLog();
        EXPECT_EQ(PlatformSettings::GetDataServiceFlag(), stored);
        EXPECT_THAT(TheSettings().reads, ElementsAre("int " + DATA_SERVICE));
        EXPECT_THAT(Log(),
                    ElementsAre(Debug("DATA_SERVICE VCONF value is : " + std::to_string(stored),
                                      "GetDataServiceFlag")));
    }
}

TEST_F(PlatformSettingsOfASet, ADataServiceFlagThatCannotBeReadIsZero) {
    EXPECT_EQ(PlatformSettings::GetDataServiceFlag(), 0);
    EXPECT_THAT(Log(), ElementsAre(Error("Can not get data service value from VCONF",
                                         "GetDataServiceFlag")));
}

struct Region {
    int factoryValue;
    int localSet;
};

class RegionOf : public Set, public testing::WithParamInterface<Region> {};

TEST_P(RegionOf, TheFactoryValueIsTheLocalSetOfTheTable) {
    const auto [factoryValue, localSet] = GetParam();
    TheFactoryData().Hold(factoryValue);
    EXPECT_EQ(PlatformSettings::GetLocalSet(), localSet);
    ASSERT_EQ(TheFactoryData().reads.size(), 1U);
    EXPECT_EQ(TheFactoryData().reads[0].id, 194);
    EXPECT_THAT(TheSleep().pauses, ElementsAre());
    EXPECT_THAT(Log(), ElementsAre(Debug("GetData(ID_LOCALSET, ...) loop=0;", "GetLocalSet"),
                                   Debug("ID_LOCALSET value: " + std::to_string(factoryValue),
                                         "GetLocalSet")));
}

INSTANTIATE_TEST_SUITE_P(Table, RegionOf,
                         testing::Values(Region{8, 1}, Region{81, 2}, Region{84, 3}, Region{85, 4},
                                         Region{0, 0}, Region{1, 0}, Region{2, 0}, Region{7, 0},
                                         Region{9, 0}, Region{80, 0}, Region{82, 0}, Region{83, 0},
                                         Region{86, 0}, Region{-8, 0}, Region{INT_MAX, 0},
                                         Region{INT_MIN, 0}),
                         [](const auto& given) { return "Row" + std::to_string(given.index); });

TEST_F(PlatformSettingsOfASet, TheRegionIsTriedAgainAfterAPause) {
    TheFactoryData().answers = {{1, 0}, {FACTORY_DATA_INTEGER, 8}};
    EXPECT_EQ(PlatformSettings::GetLocalSet(), 1);
    EXPECT_EQ(TheFactoryData().reads.size(), 2U);
    EXPECT_THAT(TheSleep().pauses, ElementsAre(500000));
    EXPECT_THAT(Log(), ElementsAre(Debug("GetData(ID_LOCALSET, ...) loop=0;", "GetLocalSet"),
                                   Debug("ID_LOCALSET value: 0"),
                                   Debug("GetData(ID_LOCALSET, ...) loop=1;"),
                                   Debug("ID_LOCALSET value: 8")));
}

TEST_F(PlatformSettingsOfASet, TheTenthAttemptStillCounts) {
    TheFactoryData().answers.assign(9, {-1, 0});
    TheFactoryData().answers.push_back({FACTORY_DATA_INTEGER, 85});
    EXPECT_EQ(PlatformSettings::GetLocalSet(), 4);
    EXPECT_EQ(TheSleep().pauses.size(), 9U);
}

TEST_F(PlatformSettingsOfASet, LogsAndIgnoresARegionThatIsNotAnInteger) {
    TheFactoryData().answers = {{3, 8}};
    EXPECT_EQ(PlatformSettings::GetLocalSet(), 0);
    EXPECT_EQ(Log().at(1), Debug("ID_LOCALSET value: 8"));
}

TEST_F(PlatformSettingsOfASet, TriesTenTimesWithAPauseAfterEachWithoutARegion) {
    std::vector<size_t> readsBeforePause;
    TheSleep().meanwhile = [&] { readsBeforePause.push_back(TheFactoryData().reads.size()); };
    EXPECT_EQ(PlatformSettings::GetLocalSet(), 0);
    EXPECT_THAT(readsBeforePause, ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9, 10));
    EXPECT_EQ(TheFactoryData().reads.size(), 10U);
    EXPECT_EQ(TheSleep().pauses, std::vector<useconds_t>(10, 500000));
}

TEST_F(PlatformSettingsOfASet, LogsTheBuffersAddressWithoutARegion) {
    PlatformSettings::GetLocalSet();
    std::vector<LogLine> expected;
    for (int attempt = 0; attempt < 10; ++attempt) {
        expected.push_back(
            Debug("GetData(ID_LOCALSET, ...) loop=" + std::to_string(attempt) + ";"));
        expected.push_back(Debug("ID_LOCALSET value: 0"));
    }
    const auto address =
        static_cast<int>(reinterpret_cast<intptr_t>(TheFactoryData().reads.at(0).buffer));
    expected.push_back(Error(
        "GetData failed or is not int for ID_LOCALSET[value = " + std::to_string(address) + "]",
        "GetLocalSet"));
    EXPECT_EQ(Log(), expected);
}

TEST_F(PlatformSettingsOfASet, TheFactoryBufferIsAlignedForANumber) {
    TheFactoryData().Hold(8);
    PlatformSettings::GetLocalSet();
    EXPECT_EQ(reinterpret_cast<uintptr_t>(TheFactoryData().reads.at(0).buffer) % alignof(int), 0U);
}

}  // namespace
}  // namespace applist::test
