// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <functional>
#include <ostream>

#include <gmock/gmock.h>

#include "unit/visibility/VisibilityFixture.h"
#include "visibility-checker.h"

namespace applist::test {
namespace {

using testing::ElementsAre;
using Visibility = Set;

constexpr int FACTORY_VALUES[] = {0, 8, 81, 84, 85};
constexpr const char* MENU_KEY = "menu/system/application-list";

struct Row {
    int localSet;
    int flag;
    bool autorun;
    bool autostart;

    /// The row's last column in words.
    bool IsShown() const {
        switch (localSet) {
            case 0:
                return false;
            case 1:
                if (flag != 2 && flag != 3 && flag != 6 && flag != 7) {
                    return false;
                }
                return !autorun || !autostart;
            default:
                return flag >= 2;
        }
    }
};

std::ostream& operator<<(std::ostream& out, const Row& row) {
    return out << "local set " << row.localSet << ", flag " << row.flag << ", autorun "
               << row.autorun << ", autostart " << row.autostart;
}

/// All rows of one local set.
class VisibilityTable : public Set, public testing::WithParamInterface<int> {
protected:
    static void ForEachRow(const std::function<void(const Row&)>& check) {
        for (int bits = 0; bits < 32; ++bits) {
            const Row row{GetParam(), bits & 7, (bits & 8) != 0, (bits & 16) != 0};
            SCOPED_TRACE(testing::PrintToString(row));
            TheSettings() = {};
            TheFactoryData() = {};
            TheFactoryData().Hold(FACTORY_VALUES[row.localSet]);
            Hold(row.flag, row.autorun, row.autostart ? 1 : 0);
            ClearLog();
            check(row);
        }
    }

    /// The settings that must be read for the region, in order, whatever their values.
    static void ExpectReads() {
        const Reads reads =
            GetParam() == 0   ? Reads{}
            : GetParam() == 1 ? Reads{"int " + DATA_SERVICE, "bool " + AUTORUN, "int " + AUTOSTART}
                              : Reads{"int " + DATA_SERVICE};
        EXPECT_EQ(TheSettings().reads, reads);
        EXPECT_EQ(TheFactoryData().reads.size(), 1U);
    }
};

TEST_P(VisibilityTable, DecidesAsEachRowSays) {
    ForEachRow([](const Row& row) {
        EXPECT_EQ(CheckVisibility(), row.IsShown());
        ExpectReads();
    });
}

INSTANTIATE_TEST_SUITE_P(OfLocalSet, VisibilityTable, testing::Range(0, 5));

TEST_F(Visibility, LooksAtSingleBitsOfTheFlag) {
    TheFactoryData().Hold(85);
    for (const int hidden : {0, 1, 8, 9, 1 << 30}) {
        Hold(hidden, false, 0);
        EXPECT_FALSE(CheckVisibility()) << hidden;
    }
    for (const int shown : {10, 12, -1, -2}) {
        Hold(shown, false, 0);
        EXPECT_TRUE(CheckVisibility()) << shown;
    }
}

TEST_F(Visibility, IsHiddenWhenNoSettingCanBeRead) {
    for (const int factoryValue : {8, 81, 84, 85}) {
        TheFactoryData().Hold(factoryValue);
        EXPECT_FALSE(CheckVisibility()) << factoryValue;
    }
}

TEST_F(Visibility, IsHiddenAfterTenPausesWithoutARegion) {
    Hold(2, false, 0);
    EXPECT_FALSE(CheckVisibility());
    EXPECT_EQ(TheSleep().pauses.size(), 10U);
    EXPECT_THAT(TheSettings().reads, ElementsAre());
    const auto& log = Log();
    ASSERT_EQ(log.size(), 24U);
    EXPECT_EQ(log[21], Debug("Localset is: 0", "CheckVisibility"));
    EXPECT_EQ(log[22], Debug("Data Service Item is not visible due to Localset LOCAL_NONE_OF",
                             "CheckVisibility"));
    EXPECT_EQ(log[23], Debug("CheckVisibility resulting in :0", "CheckVisibility"));
}

TEST_F(Visibility, LogsADecisionWithoutDataServices) {
    TheFactoryData().Hold(82);
    CheckVisibility();
    EXPECT_THAT(
        Log(),
        ElementsAre(Debug("GetData(ID_LOCALSET, ...) loop=0;"), Debug("ID_LOCALSET value: 82"),
                    Debug("Localset is: 0", "CheckVisibility"),
                    Debug("Data Service Item is not visible due to Localset LOCAL_NONE_OF",
                          "CheckVisibility"),
                    Debug("CheckVisibility resulting in :0", "CheckVisibility")));
}

TEST_F(Visibility, LogsADecisionInItaly) {
    TheFactoryData().Hold(8);
    Hold(6, true, 7);
    CheckVisibility();
    EXPECT_THAT(
        Log(),
        ElementsAre(Debug("GetData(ID_LOCALSET, ...) loop=0;"), Debug("ID_LOCALSET value: 8"),
                    Debug("Localset is: 1", "CheckVisibility"),
                    Debug("Checking Data Service Item visibility for Localset LOCAL_ITALY",
                          "CheckVisibility"),
                    Debug("CheckDVBVisibility function start", "CheckDVBVisibility"),
                    Debug("DATA_SERVICE VCONF value is : 6"), Debug("Get Autorun Data Service"),
                    Debug("Autorun Data Service value from vconf: 1"),
                    Debug("Get autostart application information"),
                    Debug("Autostart application value from vconf: 7"),
                    Debug("From vconf: dataServcieExists=1, autorunOn=1, autostartXlet=1",
                          "CheckDVBVisibility"),
                    Debug("CheckDVBVisibility function end", "CheckDVBVisibility"),
                    Debug("CheckVisibility resulting in :0", "CheckVisibility")));
}

TEST_F(Visibility, LogsADecisionInTheIsdbRegions) {
    for (const int localSet : {2, 3, 4}) {
        TheFactoryData().Hold(FACTORY_VALUES[localSet]);
        Hold(4, true, 1);
        ClearLog();
        CheckVisibility();
        EXPECT_THAT(
            Log(),
            ElementsAre(Debug("GetData(ID_LOCALSET, ...) loop=0;"),
                        Debug("ID_LOCALSET value: " + std::to_string(FACTORY_VALUES[localSet])),
                        Debug("Localset is: " + std::to_string(localSet)),
                        Debug("Checking Data Service Item visibility for Localset "
                              "LOCAL_BRAZIL/LOCAL_ARGENTINA/LOCAL_URUGUAY",
                              "CheckVisibility"),
                        Debug("CheckISDBVisibility function start", "CheckISDBVisibility"),
                        Debug("Checking Data Service Availability", "CheckISDBVisibility"),
                        Debug("DATA_SERVICE VCONF value is : 4"),
                        Debug("CheckISDBVisibility function end", "CheckISDBVisibility"),
                        Debug("CheckVisibility resulting in :1", "CheckVisibility")));
    }
}

TEST_F(Visibility, LogsASettingThatCannotBeReadAndContinues) {
    TheFactoryData().Hold(8);
    CheckDVBVisibility();
    EXPECT_THAT(Log(),
                ElementsAre(Debug("CheckDVBVisibility function start", "CheckDVBVisibility"),
                            Error("Can not get data service value from VCONF"),
                            Debug("Get Autorun Data Service"),
                            Error("Can not get value for Autorun Data Service menu item"),
                            Debug("Autorun Data Service value from vconf: 0"),
                            Debug("Get autostart application information"),
                            Error("Can not get value for autostart application"),
                            Debug("Autostart application value from vconf: 0"),
                            Debug("From vconf: dataServcieExists=0, autorunOn=0, autostartXlet=0"),
                            Debug("CheckDVBVisibility function end", "CheckDVBVisibility")));
}

TEST_F(Visibility, IsGivenOnlyForTheExactMenuKey) {
    TheFactoryData().Hold(81);
    Hold(2, false, 0);
    for (const char* key :
         {"menu/system/application-list/", "menu/system/Application-list", "/", "",
          "MENU/SYSTEM/APPLICATION-LIST", "menu/system/application-lis",
          " menu/system/application-list", "db/menu/broadcasting/autorun-dataservice"}) {
        ClearLog();
        EXPECT_EQ(check_visibility_int(key), 0) << key;
        EXPECT_THAT(Log(),
                    ElementsAre(Debug(std::string("check_visibility_int called with Key: ") + key),
                                Debug("Item will not be shown", "check_visibility_int")));
    }
    EXPECT_TRUE(TheFactoryData().reads.empty());
    EXPECT_THAT(TheSettings().reads, ElementsAre());
}

TEST_F(Visibility, IsHiddenWithoutAMenuKey) {
    EXPECT_EQ(check_visibility_int(nullptr), 0);
    EXPECT_THAT(Log(), ElementsAre(Debug("check_visibility_int called with Key: (null)",
                                         "check_visibility_int"),
                                   Debug("Item will not be shown", "check_visibility_int")));
}

TEST_F(Visibility, AnswersTheMenusQuestion) {
    TheFactoryData().Hold(81);
    Hold(0, false, 0);
    EXPECT_EQ(check_visibility_int(MENU_KEY), 0);
    ClearLog();
    Hold(2, false, 0);
    EXPECT_EQ(check_visibility_int(MENU_KEY), 1);
    EXPECT_EQ(Log().front(), Debug(std::string("check_visibility_int called with Key: ") + MENU_KEY,
                                   "check_visibility_int"));
    EXPECT_EQ(Log().back(), Debug("CheckVisibility resulting in :1", "CheckVisibility"));
}

TEST_F(Visibility, IsNotReadByTheOtherMenuFunctions) {
    EXPECT_EQ(check_visibility_bool(MENU_KEY), 1);
    EXPECT_EQ(check_visibility_double(MENU_KEY), 1);
    EXPECT_EQ(check_visibility_string(MENU_KEY), 1);
    EXPECT_THAT(TheSettings().reads, ElementsAre());
    EXPECT_TRUE(TheFactoryData().reads.empty());
    EXPECT_THAT(Log(), ElementsAre());
}

}  // namespace
}  // namespace applist::test
