// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <array>

#include <gmock/gmock.h>

#include "Decision.h"
#include "unit/visibility/VisibilityFixture.h"
#include "visibility-checker.h"

namespace applist::test {
namespace {

using desktop::Circumstances;
using desktop::DecidingSettings;
using testing::ElementsAre;

constexpr std::array FACTORY_VALUES{0, 8, 81, 84, 85};

bool Decide(const Circumstances& given) {
    TheFactoryData().Hold(FACTORY_VALUES.at(static_cast<size_t>(given.localSet)));
    TheSettings().ints = {{DATA_SERVICE, given.dataServiceFlag}, {AUTOSTART, given.autostart}};
    TheSettings().bools = {{AUTORUN, given.autorun}};
    return CheckVisibility();
}

std::vector<Circumstances> AllOf(int localSet) {
    std::vector<Circumstances> all;
    for (int bits = 0; bits < 32; ++bits) {
        all.push_back({localSet, bits & 7, (bits & 8) != 0, (bits & 16) != 0});
    }
    return all;
}

bool AgreeOn(const std::vector<std::string>& keys, const Circumstances& one,
             const Circumstances& other) {
    return std::all_of(keys.begin(), keys.end(), [&](const std::string& key) {
        return key == DATA_SERVICE ? one.dataServiceFlag == other.dataServiceFlag
               : key == AUTORUN    ? one.autorun == other.autorun
                                   : one.autostart == other.autostart;
    });
}

class TheSettingsThatDecide : public Set, public testing::WithParamInterface<int> {};

TEST_P(TheSettingsThatDecide, FixTheAnswerWhateverTheOthersHold) {
    for (const Circumstances& given : AllOf(GetParam())) {
        const auto deciding = DecidingSettings(given);
        const bool answer = Decide(given);
        for (const Circumstances& other : AllOf(GetParam())) {
            if (AgreeOn(deciding, given, other)) {
                EXPECT_EQ(Decide(other), answer)
                    << given.dataServiceFlag << given.autorun << given.autostart;
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(InEveryRegion, TheSettingsThatDecide, testing::Range(0, 5));

TEST(SettingsThatDecide, AreThoseThatAViewerWouldName) {
    EXPECT_THAT(DecidingSettings({0, 7, true, true}), ElementsAre());
    EXPECT_THAT(DecidingSettings({1, 4, true, true}), ElementsAre(DATA_SERVICE));
    EXPECT_THAT(DecidingSettings({1, 2, true, true}), ElementsAre(AUTORUN, AUTOSTART));
    EXPECT_THAT(DecidingSettings({1, 2, false, true}), ElementsAre(DATA_SERVICE, AUTORUN));
    EXPECT_THAT(DecidingSettings({1, 2, true, false}), ElementsAre(DATA_SERVICE, AUTOSTART));
    EXPECT_THAT(DecidingSettings({3, 4, true, true}), ElementsAre(DATA_SERVICE));
}

}  // namespace
}  // namespace applist::test
