// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "CommandLine.h"

namespace applist::test {
namespace {

using desktop::ParseCommandLine;
using testing::ElementsAre;

TEST(CommandLine, FindsItsOptionsAnywhere) {
    for (const auto& arguments : {std::vector<std::string>{"--json", "get", "KEY"},
                                  {"get", "--json", "KEY"},
                                  {"get", "KEY", "--json"}}) {
        const auto line = ParseCommandLine(arguments);
        EXPECT_TRUE(line.json);
        EXPECT_FALSE(line.help);
        EXPECT_THAT(line.words, ElementsAre("get", "KEY"));
    }
}

TEST(CommandLine, TakesANegativeNumberForAWord) {
    const auto line = ParseCommandLine({"set", "KEY", "int", "-5"});
    EXPECT_THAT(line.words, ElementsAre("set", "KEY", "int", "-5"));
    EXPECT_EQ(line.unknownOption, "");
}

TEST(CommandLine, KeepsTheFirstUnknownOption) {
    EXPECT_EQ(ParseCommandLine({"list", "--jsno", "--what"}).unknownOption, "--jsno");
}

TEST(CommandLine, LooksForNoOptionsBehindTwoDashes) {
    const auto line = ParseCommandLine({"launch", "--", "--json", "--", "-h"});
    EXPECT_FALSE(line.json);
    EXPECT_FALSE(line.help);
    EXPECT_THAT(line.words, ElementsAre("launch", "--json", "--", "-h"));
}

TEST(CommandLine, AsksForHelpInBothForms) {
    EXPECT_TRUE(ParseCommandLine({"get", "--help"}).help);
    EXPECT_TRUE(ParseCommandLine({"-h"}).help);
}

}  // namespace
}  // namespace applist::test
