// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <iterator>
#include <sstream>

#include <gmock/gmock.h>

#include "e2e/visibility/Platformctl.h"

namespace applist::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

const std::string OFFER = "to offer the list, run:\n";

class VisibleSet : public Platformctl {
protected:
    /// Runs lines such as "  platformctl region italy".
    static void RunLines(const std::string& lines) {
        std::istringstream text(lines);
        for (std::string line; std::getline(text, line);) {
            std::istringstream words(line);
            std::string word;
            words >> word;
            ASSERT_EQ(word, "platformctl");
            Do(Arguments(std::istream_iterator<std::string>(words), {}));
        }
    }
};

TEST_F(VisibleSet, NamesTheCommandsThatOfferTheList) {
    for (const auto& [region, flag] : {std::pair{"italy", "1"}, {"brazil", "0"}, {"none", "4"}}) {
        Do({"region", region});
        Do({"set", DATA_SERVICE, "int", flag});
        Do({"set", AUTORUN, "bool", "true"});
        Do({"set", AUTOSTART, "int", "1"});
        const std::string output = Run({"visible"}).output;
        const size_t commands = output.find(OFFER);
        ASSERT_NE(commands, std::string::npos) << output;
        RunLines(output.substr(commands + OFFER.size()));
        EXPECT_THAT(Run({"visible"}).output, StartsWith("shown\n")) << output;
    }
}

TEST_F(VisibleSet, InItalyFollowsAllThreeSettings) {
    Do({"region", "italy"});
    Do({"set", DATA_SERVICE, "int", "2"});
    Do({"set", AUTORUN, "bool", "true"});
    Do({"set", AUTOSTART, "int", "1"});
    EXPECT_EQ(Run({"visible"}).output, "hidden\n  factory 194: 8\n  " + AUTORUN + ": true\n  " +
                                           AUTOSTART + ": 1\n" + OFFER + "  platformctl set " +
                                           AUTORUN + " bool false\n");
    Do({"set", AUTOSTART, "int", "0"});
    EXPECT_EQ(Run({"visible"}).output,
              "shown\n  factory 194: 8\n  " + DATA_SERVICE + ": 2\n  " + AUTOSTART + ": 0\n");
}

TEST_F(VisibleSet, PrintsItsReasonsAsJson) {
    Do({"region", "brazil"});
    Do({"set", DATA_SERVICE, "int", "0"});
    const auto result = Run({"visible", "--json"});
    EXPECT_EQ(
        result.output,
        "{\n  \"visible\": false,\n  \"decided_by\": [\n"
        "    {\n      \"name\": \"factory 194\",\n      \"type\": \"int\",\n      \"value\": 81\n  "
        "  },\n"
        "    {\n      \"name\": \"" +
            DATA_SERVICE +
            "\",\n      \"type\": \"int\",\n      \"value\": 0\n    }\n  ],\n  \"to_show\": [\n"
            "    {\n      \"command\": \"platformctl set " +
            DATA_SERVICE + " int 2\"\n    }\n  ]\n}\n");
}

TEST_F(VisibleSet, OfADamagedStoreIsHidden) {
    Do({"region", "brazil"});
    m_root.Write("memory/settings.ini", "damage\n");
    const auto result = Run({"visible"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output,
                StartsWith("hidden\n  factory 194: 81\n  " + DATA_SERVICE + ": unreadable\n"));
    EXPECT_THAT(result.errors,
                HasSubstr("platformctl: " + m_root.Path("memory/settings.ini") + ": damaged"));
}

TEST_F(VisibleSet, WithoutARegionIsHiddenAfterAWaitThatIsAnnounced) {
    Do({"set", DATA_SERVICE, "int", "2"});
    Arguments command = ClockAtSpeed("20");
    command.insert(command.end(), {BuiltProgram("platformctl"), "visible"});
    ChildProcess visible(command);
    EXPECT_EQ(visible.WaitForExit(), 0);
    EXPECT_THAT(visible.Output(), StartsWith("hidden\n  factory 194: not set\n"));
    EXPECT_THAT(visible.Errors(), HasSubstr("platformctl: the region is not set"));
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
