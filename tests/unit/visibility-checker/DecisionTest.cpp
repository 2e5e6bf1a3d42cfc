// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "Decision.h"
#include "PlatformSettings.h"

namespace applist::test {
namespace {

using desktop::CommandsToShow;
using desktop::DecidingSettings;
using testing::ElementsAre;
using testing::IsEmpty;

const std::string& AUTORUN = PlatformSettings::AUTORUN_DATA_SERVICE_KEY;
const std::string& DATA_SERVICE = PlatformSettings::DATA_SERVICE_KEY;
const std::string& AUTOSTART = PlatformSettings::AUTOSTART_APP;

TEST(DecidingSettings, AreNoneWithoutARegion) {
    EXPECT_THAT(DecidingSettings({0, 7, true, true}), IsEmpty());
    EXPECT_THAT(DecidingSettings({5, 7, true, true}), IsEmpty());
}

TEST(DecidingSettings, InItalyAreThoseThatFixTheAnswer) {
    EXPECT_THAT(DecidingSettings({1, 4, true, true}), ElementsAre(DATA_SERVICE));
    EXPECT_THAT(DecidingSettings({1, 2, true, true}), ElementsAre(AUTORUN, AUTOSTART));
    EXPECT_THAT(DecidingSettings({1, 2, false, true}), ElementsAre(DATA_SERVICE, AUTORUN));
    EXPECT_THAT(DecidingSettings({1, 2, false, false}), ElementsAre(DATA_SERVICE, AUTORUN));
    EXPECT_THAT(DecidingSettings({1, 2, true, false}), ElementsAre(DATA_SERVICE, AUTOSTART));
}

TEST(DecidingSettings, InTheIsdbRegionsAreTheFlagAlone) {
    for (const int localSet : {2, 3, 4}) {
        EXPECT_THAT(DecidingSettings({localSet, 4, true, true}), ElementsAre(DATA_SERVICE));
    }
}

TEST(CommandsToShow, AreNoneForASetThatOffersTheList) {
    EXPECT_THAT(CommandsToShow({1, 2, true, false}), IsEmpty());
    EXPECT_THAT(CommandsToShow({3, 4, true, true}), IsEmpty());
}

TEST(CommandsToShow, ChangeOnlyWhatHidesTheList) {
    EXPECT_THAT(CommandsToShow({1, 4, true, false}), ElementsAre("set " + DATA_SERVICE + " int 6"));
    EXPECT_THAT(CommandsToShow({1, 2, true, true}), ElementsAre("set " + AUTORUN + " bool false"));
    EXPECT_THAT(CommandsToShow({4, 1, true, true}), ElementsAre("set " + DATA_SERVICE + " int 3"));
}

TEST(CommandsToShow, StoreOnlyAFlagThatIsInRange) {
    EXPECT_THAT(CommandsToShow({2, 9, false, false}),
                ElementsAre("set " + DATA_SERVICE + " int 3"));
}

TEST(CommandsToShow, ChooseItalyWithoutARegion) {
    EXPECT_THAT(CommandsToShow({0, 2, true, true}),
                ElementsAre("region italy", "set " + AUTORUN + " bool false"));
}

}  // namespace
}  // namespace applist::test
