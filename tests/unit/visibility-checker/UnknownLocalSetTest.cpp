// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <climits>

#include <gmock/gmock.h>

#include "PlatformSettings.h"
#include "fakes/FakePlatformLog.h"
#include "visibility-checker.h"

// Defines the functions of PlatformSettings in place of the real ones, so that GetLocalSet() can
// return numbers that are not a LocalSet.
namespace {
int localSet = 0;
int otherReads = 0;
}  // namespace

int PlatformSettings::GetLocalSet() {
    return localSet;
}
int PlatformSettings::GetDataServiceFlag() {
    ++otherReads;
    return ~0;
}
bool PlatformSettings::IsAutorunDataService() {
    ++otherReads;
    return false;
}
bool PlatformSettings::IsAutostartApp() {
    ++otherReads;
    return false;
}

namespace applist::test {
namespace {

class VisibilityInAnUnknownRegion : public testing::TestWithParam<int> {};

TEST_P(VisibilityInAnUnknownRegion, IsHiddenWithoutReadingASetting) {
    localSet = GetParam();
    EXPECT_FALSE(CheckVisibility());
    EXPECT_EQ(otherReads, 0);
    EXPECT_THAT(Log(), testing::ElementsAre(
                           Debug("Localset is: " + std::to_string(localSet), "CheckVisibility"),
                           Debug("Data Service Item is not visible due to unknown Localset",
                                 "CheckVisibility"),
                           Debug("CheckVisibility resulting in :0")));
    ClearLog();
}

INSTANTIATE_TEST_SUITE_P(OutOfRange, VisibilityInAnUnknownRegion,
                         testing::Values(-1, 5, INT_MIN, INT_MAX),
                         [](const auto& given) { return "Row" + std::to_string(given.index); });

}  // namespace
}  // namespace applist::test
