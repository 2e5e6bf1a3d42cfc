// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <climits>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include "PlatformSettings.h"
#include "fakes/FakeFactoryData.h"
#include "fakes/FakePlatformLog.h"
#include "fakes/FakeSettings.h"
#include "fakes/FakeSleep.h"
#include "visibility-checker.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace applist::test {
namespace {

const std::string AUTORUN = "db/menu/broadcasting/autorun-dataservice";
const std::string DATA_SERVICE = "memory/tv-viewer/data_service";
const std::string AUTOSTART = "memory/javamw/autostart-app";
constexpr const char* MENU_KEY = "menu/system/application-list";
/// The factory data's number of each region, indexed by the program's own number.
constexpr int FACTORY_VALUES[] = {0, 8, 81, 84, 85};

/// A set with fake stores and a fake clock.
class ASet : public testing::Test {
protected:
    ASet() { Reset(); }

    static void Reset() {
        TheSettings() = {};
        TheFactoryData() = {};
        TheSleep() = {};
        ClearLog();
    }

    /// Stores the region and all three settings.
    static void Hold(int localSet, int flag, int autorun, int autostart) {
        Reset();
        TheFactoryData().Hold(FACTORY_VALUES[localSet]);
        TheSettings().ints = {{DATA_SERVICE, flag}, {AUTOSTART, autostart}};
        TheSettings().bools = {{AUTORUN, autorun}};
    }

    using Reads = std::vector<std::string>;
};

/// A setting that is on for any number but 0.
struct Switch {
    const char* function;
    bool (*isOn)();
    const std::string& key;
    std::map<std::string, int> FakeSettings::*values;
    const char* read;
    const char* begin;
    const char* error;
    const char* value;
};

class ASwitch : public ASet, public testing::WithParamInterface<Switch> {
protected:
    static std::string Line(const std::string& text) {
        return std::string(GetParam().function) + ": " + text + "\n";
    }
};

TEST_P(ASwitch, IsOnForAnyNumberButZero) {
    for (const int stored : {0, 1, 2, -1, INT_MIN}) {
        Reset();
        (TheSettings().*GetParam().values)[GetParam().key] = stored;
        EXPECT_EQ(GetParam().isOn(), stored != 0) << stored;
        EXPECT_THAT(TheSettings().reads, ElementsAre(GetParam().read + GetParam().key));
        EXPECT_EQ(LogText(),
                  Line(GetParam().begin) + Line(GetParam().value + std::to_string(stored)));
    }
}

TEST_P(ASwitch, IsOffAndLoggedIfItCannotBeRead) {
    // The other type has the key.
    const bool isBool = GetParam().values == &FakeSettings::bools;
    (isBool ? TheSettings().ints : TheSettings().bools)[GetParam().key] = 1;
    EXPECT_FALSE(GetParam().isOn());
    EXPECT_EQ(LogText(), Line(GetParam().begin) + "ERROR " + Line(GetParam().error) +
                             Line(GetParam().value + std::string("0")));
}

INSTANTIATE_TEST_SUITE_P(
    PlatformSettings, ASwitch,
    testing::Values(Switch{"IsAutorunDataService", PlatformSettings::IsAutorunDataService, AUTORUN,
                           &FakeSettings::bools, "bool ", "Get Autorun Data Service",
                           "Can not get value for Autorun Data Service menu item",
                           "Autorun Data Service value from vconf: "},
                    Switch{"IsAutostartApp", PlatformSettings::IsAutostartApp, AUTOSTART,
                           &FakeSettings::ints, "int ", "Get autostart application information",
                           "Can not get value for autostart application",
                           "Autostart application value from vconf: "}),
    [](const auto& test) { return test.param.function; });

using Settings = ASet;

TEST_F(Settings, HaveTheseKeys) {
    EXPECT_EQ(PlatformSettings::AUTORUN_DATA_SERVICE_KEY, AUTORUN);
    EXPECT_EQ(PlatformSettings::DATA_SERVICE_KEY, DATA_SERVICE);
    EXPECT_EQ(PlatformSettings::AUTOSTART_APP, AUTOSTART);
}

TEST_F(Settings, OfTheDataServiceAreReadUnchanged) {
    for (const int stored : {0, 2, 4, 6, 7, -1, INT_MAX}) {
        Reset();
        TheSettings().ints[DATA_SERVICE] = stored;
        EXPECT_EQ(PlatformSettings::GetDataServiceFlag(), stored);
        EXPECT_THAT(TheSettings().reads, ElementsAre("int " + DATA_SERVICE));
        EXPECT_EQ(LogText(), "GetDataServiceFlag: DATA_SERVICE VCONF value is : " +
                                 std::to_string(stored) + "\n");
    }
    Reset();
    EXPECT_EQ(PlatformSettings::GetDataServiceFlag(), 0);
    EXPECT_EQ(LogText(), "ERROR GetDataServiceFlag: Can not get data service value from VCONF\n");
}

std::string Attempt(int number, int value) {
    return Lines({"GetLocalSet: GetData(ID_LOCALSET, ...) loop=" + std::to_string(number) + ";",
                  "GetLocalSet: ID_LOCALSET value: " + std::to_string(value)});
}

using Region = ASet;

TEST_F(Region, HasTheNumberOfItsFactoryValue) {
    const std::map<int, int> regions{{8, 1}, {81, 2}, {84, 3}, {85, 4}};
    for (const int value : {8, 81, 84, 85, 0, 1, 2, 7, 9, 80, 82, 83, 86, -8, INT_MAX, INT_MIN}) {
        Reset();
        TheFactoryData().Hold(value);
        EXPECT_EQ(PlatformSettings::GetLocalSet(), regions.count(value) > 0 ? regions.at(value) : 0)
            << value;
        ASSERT_EQ(TheFactoryData().reads.size(), 1U);
        EXPECT_EQ(TheFactoryData().reads[0].id, 194);
        EXPECT_EQ(reinterpret_cast<uintptr_t>(TheFactoryData().reads[0].buffer) % alignof(int), 0U);
        EXPECT_THAT(TheSleep().pauses, IsEmpty());
        EXPECT_EQ(LogText(), Attempt(0, value));
    }
}

TEST_F(Region, IsReadAgainAfterAPauseIfItIsNotAnInteger) {
    TheFactoryData().answers = {
        {FACTORY_DATA_INTEGER - 1, 85}, {FACTORY_DATA_INTEGER + 1, 84}, {FACTORY_DATA_INTEGER, 8}};
    EXPECT_EQ(PlatformSettings::GetLocalSet(), 1);
    EXPECT_THAT(TheSleep().pauses, ElementsAre(500000, 500000));
    EXPECT_EQ(LogText(), Attempt(0, 85) + Attempt(1, 84) + Attempt(2, 8));
}

TEST_F(Region, IsReadTenTimesWithAPauseAfterEach) {
    std::vector<size_t> readsBeforePause;
    TheSleep().meanwhile = [&] { readsBeforePause.push_back(TheFactoryData().reads.size()); };
    EXPECT_EQ(PlatformSettings::GetLocalSet(), 0);
    EXPECT_THAT(readsBeforePause, ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9, 10));
    EXPECT_EQ(TheSleep().pauses, std::vector<useconds_t>(10, 500000));
    ASSERT_EQ(TheFactoryData().reads.size(), 10U);
    std::string log;
    for (int attempt = 0; attempt < 10; ++attempt) {
        log += Attempt(attempt, 0);
    }
    const auto address =
        static_cast<int>(reinterpret_cast<intptr_t>(TheFactoryData().reads[0].buffer));
    EXPECT_EQ(LogText(),
              log + "ERROR GetLocalSet: GetData failed or is not int for ID_LOCALSET[value = " +
                  std::to_string(address) + "]\n");
}

TEST_F(Region, OfTheTenthAttemptCounts) {
    TheFactoryData().answers.assign(9, {-1, 0});
    TheFactoryData().answers.push_back({FACTORY_DATA_INTEGER, 85});
    EXPECT_EQ(PlatformSettings::GetLocalSet(), 4);
    EXPECT_EQ(TheSleep().pauses.size(), 9U);
}

/// The decision and what it reads and logs in each region.
class VisibilityIn : public ASet, public testing::WithParamInterface<int> {
protected:
    static bool IsShown(int flag, bool autorun, bool autostart) {
        if (GetParam() == 1) {
            const bool exists = flag == 2 || flag == 3 || flag == 6 || flag == 7;
            return exists && !(autorun && autostart);
        }
        return GetParam() != 0 && flag >= 2;
    }

    static Reads ExpectedReads() {
        return GetParam() == 0 ? Reads{}
               : GetParam() == 1
                   ? Reads{"int " + DATA_SERVICE, "bool " + AUTORUN, "int " + AUTOSTART}
                   : Reads{"int " + DATA_SERVICE};
    }

    static std::string ExpectedLog(int flag, bool autorun, bool autostart) {
        const std::string flagText = std::to_string(flag);
        switch (GetParam()) {
            case 0:
                return Lines(
                    {"CheckVisibility: Data Service Item is not visible due to Localset "
                     "LOCAL_NONE_OF"});
            case 1:
                return Lines(
                    {"CheckVisibility: Checking Data Service Item visibility for Localset "
                     "LOCAL_ITALY",
                     "CheckDVBVisibility: CheckDVBVisibility function start",
                     "GetDataServiceFlag: DATA_SERVICE VCONF value is : " + flagText,
                     "IsAutorunDataService: Get Autorun Data Service",
                     "IsAutorunDataService: Autorun Data Service value from vconf: " +
                         std::to_string(autorun),
                     "IsAutostartApp: Get autostart application information",
                     "IsAutostartApp: Autostart application value from vconf: " +
                         std::to_string(autostart),
                     "CheckDVBVisibility: From vconf: dataServcieExists=" +
                         std::to_string((flag & 2) / 2) + ", autorunOn=" + std::to_string(autorun) +
                         ", autostartXlet=" + std::to_string(autostart),
                     "CheckDVBVisibility: CheckDVBVisibility function end"});
            default:
                return Lines(
                    {"CheckVisibility: Checking Data Service Item visibility for Localset "
                     "LOCAL_BRAZIL/LOCAL_ARGENTINA/LOCAL_URUGUAY",
                     "CheckISDBVisibility: CheckISDBVisibility function start",
                     "CheckISDBVisibility: Checking Data Service Availability",
                     "GetDataServiceFlag: DATA_SERVICE VCONF value is : " + flagText,
                     "CheckISDBVisibility: CheckISDBVisibility function end"});
        }
    }
};

TEST_P(VisibilityIn, FollowsTheTableOfFlagAutorunAndAutostart) {
    for (int bits = 0; bits < 32; ++bits) {
        const int flag = bits & 7;
        const bool autorun = (bits & 8) != 0;
        const bool autostart = (bits & 16) != 0;
        SCOPED_TRACE(testing::Message() << flag << ' ' << autorun << ' ' << autostart);
        const bool shown = IsShown(flag, autorun, autostart);
        Hold(GetParam(), flag, autorun ? 1 : 0, autostart ? 1 : 0);
        EXPECT_EQ(CheckVisibility(), shown);
        EXPECT_EQ(TheSettings().reads, ExpectedReads());
        EXPECT_EQ(TheFactoryData().reads.size(), 1U);
        EXPECT_EQ(
            LogText(),
            Attempt(0, FACTORY_VALUES[GetParam()]) +
                Lines({"CheckVisibility: Localset is: " + std::to_string(GetParam())}) +
                ExpectedLog(flag, autorun, autostart) +
                Lines({"CheckVisibility: CheckVisibility resulting in :" + std::to_string(shown)}));
    }
}

INSTANTIATE_TEST_SUITE_P(LocalSet, VisibilityIn, testing::Range(0, 5));

using Visibility = ASet;

TEST_F(Visibility, DependsOnSingleBitsOfTheFlag) {
    for (const int hidden : {0, 1, 8, 9, 1 << 30}) {
        Hold(4, hidden, 0, 0);
        EXPECT_FALSE(CheckVisibility()) << hidden;
    }
    for (const int shown : {10, 12, -1, -2}) {
        Hold(4, shown, 0, 0);
        EXPECT_TRUE(CheckVisibility()) << shown;
    }
}

TEST_F(Visibility, IsHiddenIfNoSettingCanBeRead) {
    for (const int factoryValue : {8, 81, 84, 85}) {
        TheFactoryData().Hold(factoryValue);
        EXPECT_FALSE(CheckVisibility()) << factoryValue;
    }
}

TEST_F(Visibility, IsHiddenAfterTenPausesWithoutARegion) {
    Hold(1, 2, 0, 0);
    TheFactoryData() = {};
    EXPECT_FALSE(CheckVisibility());
    EXPECT_EQ(TheSleep().pauses.size(), 10U);
    EXPECT_THAT(TheSettings().reads, IsEmpty());
    EXPECT_EQ(Log().back(), Debug("CheckVisibility resulting in :0", "CheckVisibility"));
}

TEST_F(Visibility, IsOfferedOnlyUnderTheExactMenuKey) {
    Hold(2, 2, 0, 0);
    for (const char* key :
         {"menu/system/application-list/", "menu/system/Application-list", "/", "",
          "MENU/SYSTEM/APPLICATION-LIST", "menu/system/application-lis",
          " menu/system/application-list", "db/menu/broadcasting/autorun-dataservice",
          static_cast<const char*>(nullptr)}) {
        ClearLog();
        EXPECT_EQ(check_visibility_int(key), 0);
        EXPECT_EQ(LogText(), Lines({std::string("check_visibility_int: check_visibility_int called "
                                                "with Key: ") +
                                        (key != nullptr ? key : "(null)"),
                                    "check_visibility_int: Item will not be shown"}));
    }
    EXPECT_THAT(TheFactoryData().reads, IsEmpty());
    EXPECT_THAT(TheSettings().reads, IsEmpty());
}

TEST_F(Visibility, AnswersTheMenu) {
    Hold(2, 0, 0, 0);
    EXPECT_EQ(check_visibility_int(MENU_KEY), 0);
    Hold(2, 2, 0, 0);
    EXPECT_EQ(check_visibility_int(MENU_KEY), 1);
    EXPECT_EQ(Log().front(), Debug(std::string("check_visibility_int called with Key: ") + MENU_KEY,
                                   "check_visibility_int"));
    EXPECT_EQ(Log().back(), Debug("CheckVisibility resulting in :1", "CheckVisibility"));
}

TEST_F(Visibility, IsNotReadByTheOtherMenuFunctions) {
    EXPECT_EQ(check_visibility_bool(MENU_KEY), 1);
    EXPECT_EQ(check_visibility_double(MENU_KEY), 1);
    EXPECT_EQ(check_visibility_string(MENU_KEY), 1);
    EXPECT_THAT(TheSettings().reads, IsEmpty());
    EXPECT_THAT(TheFactoryData().reads, IsEmpty());
    EXPECT_EQ(LogText(), "");
}

}  // namespace
}  // namespace applist::test
