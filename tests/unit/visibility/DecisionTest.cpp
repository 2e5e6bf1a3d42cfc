// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "Decision.h"
#include "PlatformSettings.h"

namespace applist::test {
namespace {

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

}  // namespace
}  // namespace applist::test
