// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "e2e/visibility/Platformctl.h"

namespace applist::test {
namespace {

using testing::HasSubstr;
using VisibleSet = Platformctl;

TEST_F(VisibleSet, FollowsTheRegion) {
    Do({"set", DATA_SERVICE, "int", "4"});
    Do({"set", AUTORUN, "bool", "true"});
    Do({"set", AUTOSTART, "int", "1"});
    for (const auto& [region, answer] : {std::pair{"italy", "hidden\n  factory 194: 8\n"},
                                         {"argentina", "shown\n  factory 194: 84\n"}}) {
        Do({"region", region});
        const auto result = Run({"visible"});
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.output, answer + ("  " + DATA_SERVICE) + ": 4\n");
        EXPECT_EQ(result.errors, "");
    }
    Do({"region", "none"});
    EXPECT_EQ(Run({"visible"}).output, "hidden\n  factory 194: 0\n");
}

TEST_F(VisibleSet, InItalyFollowsAllThreeSettings) {
    Do({"region", "italy"});
    Do({"set", DATA_SERVICE, "int", "2"});
    Do({"set", AUTORUN, "bool", "true"});
    Do({"set", AUTOSTART, "int", "1"});
    EXPECT_EQ(Run({"visible"}).output,
              "hidden\n  factory 194: 8\n  " + AUTORUN + ": true\n  " + AUTOSTART + ": 1\n");
    Do({"set", AUTOSTART, "int", "0"});
    EXPECT_EQ(Run({"visible"}).output,
              "shown\n  factory 194: 8\n  " + DATA_SERVICE + ": 2\n  " + AUTOSTART + ": 0\n");
}

TEST_F(VisibleSet, PrintsItsReasonsAsJson) {
    Do({"region", "brazil"});
    Do({"set", DATA_SERVICE, "int", "0"});
    const auto result = Run({"visible", "--json"});
    EXPECT_EQ(result.output,
              "{\n  \"visible\" : false,\n  \"decided_by\" : [\n"
              "    {\n      \"name\" : \"factory 194\",\n      \"value\" : 81\n    },\n"
              "    {\n      \"name\" : \"" +
                  DATA_SERVICE + "\",\n      \"value\" : 0\n    }\n  ]\n}\n");
}

TEST_F(VisibleSet, OfADamagedStoreIsHidden) {
    Do({"region", "brazil"});
    m_root.Write("memory/settings.ini", "damage\n");
    const auto result = Run({"visible"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "hidden\n  factory 194: 81\n  " + DATA_SERVICE + ": unreadable\n");
}

TEST_F(VisibleSet, WithoutARegionIsHiddenAfterAWaitThatIsAnnounced) {
    Do({"set", DATA_SERVICE, "int", "2"});
    const auto result = Run({"visible"});
    EXPECT_EQ(result.output, "hidden\n  factory 194: not set\n");
    EXPECT_THAT(result.errors, HasSubstr("platformctl: the region is not set"));
}

TEST_F(VisibleSet, TakesARegionThatComesWhileItWaits) {
    Do({"set", DATA_SERVICE, "int", "2"});
    ChildProcess visible(CommandOf({"visible"}));
    ASSERT_TRUE(visible.WaitForText("the region is not set"));
    Do({"region", "argentina"});
    EXPECT_EQ(visible.WaitForExit(), 0);
    EXPECT_EQ(visible.Output(), "shown\n  factory 194: 84\n  " + DATA_SERVICE + ": 2\n");
}

}  // namespace
}  // namespace applist::test
